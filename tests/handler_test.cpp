// Trace handlers that change what is being looked up or saved.
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <utility>

#include "support.h"
#include "systems.h"

namespace {

// While it lives, `work` is done at each message that is `message`.
class AtMessage {
 public:
  AtMessage(std::string message, std::function<void()> work) {
    awaited = std::move(message);
    todo = std::move(work);
    ConfSetTrace(1, Receive);
  }
  ~AtMessage() {
    todo = nullptr;
    TraceLog puts_its_own_handler_back;
  }

 private:
  static void Receive(std::int32_t, const char* format, ...) {
    char message[100];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    if (todo == nullptr || awaited != message) return;
    const std::function<void()> work = todo;  // which may end this object
    work();
  }

  static inline std::string awaited;
  static inline std::function<void()> todo;
};

// The trees at hand: `t` imports `b`, which imports `d`, and `e`.
struct Trees {
  Trees() {
    EXPECT_TRUE(t->SetLink("x.y_is_a_name_that_takes_room", "link") &&
                t->SetString("x.y_is_a_name_that_takes_room", "path") && t->SetInt(2, "q.r") &&
                b->SetInt(1, "x.y_is_a_name_that_takes_room") && b->SetLink("to", "fro") &&
                b->SetLink("fro", "to") && b->Import(d) && t->Import(b) && t->Import(e));
  }
  ~Trees() {
    if (!destroyed) delete t;
  }
  Config* const t = ConfCreate("t", ConfCreateNew);
  Config* const b = ConfCreate("b", ConfCreateNew);
  Config* const d = ConfCreate("d", ConfCreateNew);
  Config* const e = ConfCreate("e", ConfCreateNew);
  bool destroyed = false;
  char buffer[32] = "x.y_is_a_name_that_takes_room";
};

}  // namespace

TEST(Handler, ChangesWhatIsLookedUp) {
  const std::string in_t = "section 't': cannot find subsection: ";
  const std::string in_b = "section 'b': cannot find subsection: ";
  const struct {
    const char* note;
    std::string message;
    std::function<void(Trees&)> work;
    const char* path;  // null: the text of `path`; "buffer": what stands there
    int value;         // 0: none is found
  } cases[] = {
      {"overwrites the link", in_t + "x", [](Trees& o) { o.t->SetLink("q", "link"); }, "link", 1},
      {"removes the link", in_t + "x", [](Trees& o) { o.t->RemoveSection("link"); }, "link", 1},
      {"overwrites the path", in_t + "x", [](Trees& o) { o.t->SetString("q.r", "path"); }, nullptr,
       1},
      {"removes the path", in_t + "x", [](Trees& o) { o.t->RemoveSection("path"); }, nullptr, 1},
      {"overwrites the caller's path", in_t + "x", [](Trees& o) { o.buffer[0] = '?'; }, "buffer",
       1},
      {"makes what is missing in an import", in_t + "new", [](Trees& o) { o.d->SetInt(5, "new"); },
       "new", 5},
      {"ends the import", in_t + "x", [](Trees& o) { o.b->RemoveSection(""); }, "link", 0},
      {"ends the import that is looked in", in_b + "n", [](Trees& o) { delete o.b; }, "n", 0},
      {"renames it", in_b + "n", [](Trees& o) { o.b->SetName("zz", ""); }, "n", 0},
      {"lets another take its place", in_b + "n",
       [](Trees& o) { delete o.b, o.e->SetName("b", ""); }, "n", 0},
      {"ends the one below", in_b + "n", [](Trees& o) { delete o.d; }, "n", 0},
      {"ends all", in_t + "n", [](Trees& o) { delete o.t, o.destroyed = true; }, "n", 0},
      {"ends all from below", in_b + "x2", [](Trees& o) { delete o.t, o.destroyed = true; }, "x2",
       0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    Trees trees;
    const std::string wanted = c.path == nullptr ? "" : c.path;
    const char* path = c.path;
    if (path == nullptr) path = trees.t->GetString("path");
    if (wanted == "buffer") path = trees.buffer;
    bool worked = false;
    const AtMessage handler(c.message, [&] {
      if (!std::exchange(worked, true)) c.work(trees);
    });
    std::int32_t value = 0;
    EXPECT_EQ(trees.t->GetInt(&value, path), c.value != 0);
    EXPECT_EQ(value, c.value);
    EXPECT_TRUE(worked);
  }
}

TEST(Handler, RemovesTheSectionThatIsAsked) {
  const char* const missing = "section 'q': cannot find subsection: n";
  const struct {
    const char* message;
    std::function<bool(Section*)> call;
  } cases[] = {
      {missing, [](Section* q) { return q->GetType("n.m") != SectionType::None; }},
      {missing, [](Section* q) { return q->GetSectionCount("n") >= 0; }},
      {missing, [](Section* q) { return q->SetName("x", "n"); }},
      {"cannot find sub_section:n", [](Section* q) { return q->RemoveSection("n"); }},
      {"section cannot begin with number", [](Section* q) { return q->SetInt(1, "m.1"); }},
  };
  for (const auto& c : cases) {
    Trees trees;
    bool removed = false;
    const AtMessage handler(c.message, [&] { removed = trees.t->RemoveSection("q"); });
    EXPECT_FALSE(c.call(trees.t->GetSection("q")));
    EXPECT_TRUE(removed);
  }
}

TEST(Handler, EndsWhatIsReadOnly) {
  const TempDir dir;
  dir.WriteFile("t.cfg", "a = 1\n");
  const std::pair<const char*, bool (*)(Config*)> cases[] = {
      {"section 't' is 'read-only', cannot set parameter: a",
       [](Config* c) { return c->SetInt(1, "a"); }},
      {"section 't' is 'read-only', cannot remove subsection 'a'",
       [](Config* c) { return c->RemoveSection("a"); }},
      {"section: 't' is 'read-only'. cannot be saved.", [](Config* c) { return c->Save(); }},
  };
  for (const auto& [message, call] : cases) {
    Config* config = ConfCreate("t", ConfCreateOpenReadOnly);
    const AtMessage handler(message, [&] { delete std::exchange(config, nullptr); });
    EXPECT_FALSE(call(config));
    EXPECT_EQ(config, nullptr);
  }
}

// Each read that succeeds clears the trail by which circles are noticed.
TEST(Handler, ReadsWhileLinksRunInACircle) {
  Trees trees;
  int rounds = 0;
  std::int32_t value = 0;
  const AtMessage handler("section 't': cannot find subsection: to", [&] {
    ++rounds;
    EXPECT_TRUE(trees.t->GetInt(&value, "q.r"));
  });
  EXPECT_FALSE(trees.t->GetInt(&value, "fro"));
  EXPECT_EQ(rounds, 1);
}

// A message about a blank section comes when the file is written: no change reaches it.
TEST(Handler, ChangesWhatIsSaved) {
  const struct {
    const char *note, *section;
    std::function<void(Config*)> work;
    bool ends = false;
  } cases[] = {
      {"removes a later sibling", "a", [](Config* c) { c->RemoveSection("f"); }},
      {"removes the next block", "a", [](Config* c) { c->RemoveSection("c"); }},
      {"removes an earlier one", "d", [](Config* c) { c->RemoveSection("b"); }},
      {"removes the section itself", "a", [](Config* c) { c->RemoveSection("a"); }},
      {"removes the block around", "d", [](Config* c) { c->RemoveSection("c"); }},
      {"adds many", "d",
       [](Config* c) {
         for (char name[] = "g"; *name <= 'z'; ++*name) EXPECT_TRUE(c->SetInt(1, name));
       }},
      {"moves a section to the end", "a",
       [](Config* c) { EXPECT_TRUE(c->RemoveSection("b") && c->SetInt(1, "b")); }},
      {"renames and overwrites", "a",
       [](Config* c) {
         EXPECT_TRUE(c->SetName("new", "f") && c->SetString("new", "b") &&
                     c->SetComment("long", "c.e", true));
       }},
      {"saves to another file", "d",
       [](Config* c) { EXPECT_TRUE(c->SetName("u", "") && c->Save() && c->SetName("t", "")); }},
      {"ends the configuration", "a", [](Config* c) { delete c; }, true},
  };
  const TempDir dir;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    ConfigPtr config = ParseText("t", "a{} b=1 #b\nc{d{} e=2 #e\n} f=3");
    bool worked = false;
    const AtMessage handler(std::string("[") + c.section +
                                "] - trying to save blank section without property. skipped\n",
                            [&] {
                              if (!std::exchange(worked, true))
                                c.work(c.ends ? config.release() : config.get());
                            });
    EXPECT_TRUE(config->Save());
    EXPECT_TRUE(worked);
    EXPECT_EQ(WithoutLineEnds(dir.ReadFile("t.cfg")), "b = 1 #b\nc\n{\n\te = 2 #e\n}\nf = 3\n");
  }
}
