// Uses each public function once, with one header, from outside: host DIRECTORY, a writable one.
#include <confgrove/confgrove.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

int MessageCount = 0;
void Count(std::int32_t, const char*, ...) { ++MessageCount; }

void Expect(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::exit(1);
}
#define EXPECT(condition) Expect(condition, #condition)

void Write(Config& config) {
  const double doubles[] = {0.5, 2};
  const std::int32_t ints[] = {3, -4, 5};
  EXPECT(config.SetString("text", "a.string") && config.SetDouble(2.5, "a.double"));
  EXPECT(config.SetDoubles(doubles, 2, "a.doubles") && config.SetInt(7, "a.int"));
  EXPECT(config.SetBool(true, "a.bool") && config.SetInts(ints, 3, "a.ints"));
  EXPECT(config.SetLink("a.double", "a.link") && config.SetComment(" c", "a.int", true));
  EXPECT(config.SetInt(1, "a.gone") && config.RemoveSection("a.gone"));
  EXPECT(config.SetName("b", "a.bool") && !config.SetName("int", "a.b"));
}

void Read(Config& config) {
  double number = 0;
  std::int32_t integer = 0;
  bool flag = false;
  double doubles[2];
  std::int32_t ints[3];
  EXPECT(std::strcmp(config.GetString("a.string"), "text") == 0);
  EXPECT(config.GetDouble(&number, "a.link") && number == 2.5);
  EXPECT(config.GetInt(&integer, "a.int") && integer == 7 && config.GetBool(&flag, "a.b") && flag);
  EXPECT(config.GetDoubles(doubles, 2, "a.doubles") == 2 && doubles[1] == 2);
  EXPECT(config.GetInts(ints, 3, "a.ints") == 3 && ints[1] == -4);
  EXPECT(config.GetType("a.link") == SectionType::Number);
  EXPECT(std::strcmp(config.GetComment("a.int", true), " c") == 0);
  EXPECT(config.GetSectionCount("a") == 7 && std::strcmp(config.GetName("a", 0), "string") == 0);
  EXPECT(config.GetSection("a")->GetTop() == config.GetTop());
}

}  // namespace

int main(int argc, char** argv) {
  EXPECT(argc == 2);
  Io::SetTraceHandler(Count);
  ConfSet(argv[1], nullptr, 0, nullptr);
  ConfSetTrace(1, nullptr);
  EXPECT(std::string(ConfGetRoot()).rfind(argv[1], 0) == 0);

  Config* written = ConfCreate("host", ConfCreateNew);
  Write(*written);
  EXPECT(written->Save() && written->GetFileTime() != nullptr);
  EXPECT(std::strstr(written->GetFileName(), "host.cfg") != nullptr);
  EXPECT(written->RemoveSection(""));

  Config* read = ConfCreate("host", ConfCreateOpenReadOnly);
  EXPECT(read != nullptr);
  Read(*read);
  EXPECT(!read->Save() && MessageCount > 0);
  Config* top = ConfCreate("top", ConfCreateNew);
  EXPECT(top->Import(read) && top->GetSectionCount("a") == 7);
  delete top;

  char directory[8] = "d";
  EXPECT(std::strcmp(Io::Dir(directory), "d\\") == 0 && Io::DeleteDirectoryRecursive("d"));
  EXPECT(Io::CreateDirectoryRecursive(argv[1]));
  EXPECT(Io::GetCommandLineOption("host -v x", "-v", directory, 8) && directory[0] == 'x');
  std::string text = " a.b\t ";
  EXPECT(Symbols::clear_ctrl(Symbols::clear_blanks(text)) == "a.b" && Symbols::check_path(text));
  return 0;
}
