// What is saved reads back: the same tree, and the same bytes when it is saved again, or formatted.
#include <confgrove/save_in_place.h>
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <vector>

#include "support.h"
#include "systems.h"

namespace {

// Grows random trees of all that a file can carry.
struct Generator {
  std::mt19937 random;
  std::vector<std::string> targets;  // what a link can name: all that stands earlier in the file

  int Pick(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

  std::string Bytes(int most, const std::string& without) {
    std::string bytes;
    for (int n = Pick(most + 1); n > 0; n--) {
      const char byte = static_cast<char>(1 + Pick(255));
      if (without.find(byte) == std::string::npos) bytes += byte;
    }
    return bytes;
  }

  void Grow(Section* root, const std::string& block, int depth) {
    for (int i = Pick(6); i >= 0; i--) {
      std::string path = block;
      for (int n = Pick(9); n >= 0; n--) path += "azAZ_\xC0\xE8\xFF\xA8\xB8"[Pick(10)];
      path += std::to_string(i) + "_";  // no sibling's name
      const std::string comment = Bytes(9, "\r\n") + "\n" + Bytes(9, "\r\n");
      if (Pick(3) == 0) root->SetComment(comment.c_str(), path.c_str());
      std::vector<double> numbers(static_cast<std::size_t>(1 + Pick(6)));
      for (double& number : numbers) {  // of six digits, which is what a file keeps
        const std::string digits = std::to_string(Pick(1999999) - 999999);
        number = std::stod(digits + "e" + std::to_string(Pick(30) - 15));
      }
      const bool has_body = depth > 0 && Pick(3) == 0;
      switch (Pick(has_body ? 4 : 3)) {
        case 0:
          root->SetDoubles(numbers.data(), static_cast<int>(numbers.size()), path.c_str());
          break;
        case 1: root->SetString(Bytes(30, "\"\r\n").c_str(), path.c_str()); break;
        case 2: root->SetLink(targets[random() % targets.size()].c_str(), path.c_str());
      }
      targets.push_back(path);
      if (has_body) Grow(root, path + ".", depth - 1);
      if (Pick(3) == 0) root->SetComment(comment.c_str(), path.c_str(), true);
    }
  }

  // The same settings in another layout: what Save has written, its blanks and braces moved.
  std::string Scatter(const std::string& saved) {
    std::istringstream lines(saved);
    std::string text, before;  // `before` is the line above
    for (std::string line; std::getline(lines, line); before = line) {
      line.erase(0, line.find_first_not_of('\t'));
      const std::size_t equals = line.find(" = ");
      const bool is_code = !line.empty() && line[0] != '#' && line[0] != '$';
      if (is_code && equals < line.find('#')) {
        line.replace(equals, 3, Blanks() + '=' + Blanks());
      }
      const bool joins = line == "{" && before.find('#') == std::string::npos;
      text += joins ? " " : text.empty() ? "" : "\n";
      text += (is_code ? Blanks() : "") + line;
    }
    return text + "\n";
  }

  std::string Blanks() { return std::string(static_cast<std::size_t>(Pick(3)), " \t"[Pick(2)]); }
};

}  // namespace

TEST(RoundTrip, SameTreeAndSameBytes) {
  TempDir dir;
  dir.WriteFile("base.cfg", "in_base=0.5");
  for (unsigned seed = 0; seed < 400; seed++) {
    SCOPED_TRACE(seed);
    Generator generator{std::mt19937(seed), {"in_base"}};
    const std::string name = std::to_string(seed);
    const ConfigPtr config = Open(name, ConfCreateNew);
    EXPECT_TRUE(config->Import(Open("base").release()));
    EXPECT_TRUE(config->SetComment(generator.Bytes(20, "\r\n").c_str(), ""));
    generator.Grow(config.get(), "", 4);
    const std::string saved = Saved(config.get());
    TraceLog log(1);
    const ConfigPtr loaded = Open(name);
    EXPECT_NE(log.Text().find("3 0 error(s), 0 warning(s)\n"), std::string::npos) << log.Text();
    ASSERT_EQ(DumpTree(loaded.get()), DumpTree(config.get()));
    EXPECT_TRUE(loaded->SetName((name + "_again").c_str(), ""));
    EXPECT_EQ(Saved(loaded.get()), saved);

    // A program's first save leaves this blank line out.
    std::string first_saved = saved;
    const std::string import = "$import \"base\"\n\n";
    const std::size_t blank = first_saved.find(import + "\n#");
    if (blank != std::string::npos) first_saved.erase(blank + import.size(), 1);
    const std::string scattered = generator.Scatter(saved);
    dir.WriteFile("scattered.cfg", scattered);
    const confgrove::SaveResult formatted = confgrove::FormatFile(dir.Path("scattered.cfg"));
    ASSERT_EQ(formatted.reason, "");
    ASSERT_EQ(dir.ReadFile("scattered.cfg"), WithLineEnds(first_saved)) << scattered;
  }
}
