// Each allocation of an operation fails in turn: the host gets std::bad_alloc or a failed result,
// the trees stay sound, nothing leaks, and later calls work.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "fuzz/tree_checks.h"
#include "support.h"

namespace {

long Live = 0;        // allocations not yet released
long Countdown = -1;  // successful ones before the one that fails; below 0 none fails

void* Allocate(std::size_t size) noexcept {
  if (Countdown >= 0 && Countdown-- == 0) return nullptr;
  void* memory = std::malloc(size);
  if (memory != nullptr) ++Live;
  return memory;
}

void* AllocateOrThrow(std::size_t size) {
  if (void* memory = Allocate(size)) return memory;
  throw std::bad_alloc();
}

void Release(void* memory) noexcept {
  if (memory != nullptr) --Live;
  std::free(memory);
}

const char Long[] = "longer_than_what_fits_into_a_small_object";
constexpr int Operations = 16;

// True if it did its work.
bool Work(int operation, Config* config, Config* other) {
  static const std::int32_t integers[200] = {1, 2, 3};
  const char* const path = config->GetFileName();
  switch (operation) {
    case 0: return Open("t") != nullptr;
    case 1: return ConfigPtr(ConfCreate(path, ConfCreateOpen, ConfNameFullPath)) != nullptr;
    case 2: return config->GetString("l") != nullptr && config->GetString("missing") == nullptr;
    case 3: return config->SetString(Long, "x.y.z");
    case 4: return config->SetLink(Long, Long);
    case 5: return config->SetInts(integers, 200, "b.n");
    case 6: return config->SetComment(Long, "n");
    case 7: return config->SetComment(Long, "b", true);
    case 8: return config->SetName(Long, "", 0);
    case 9: return config->SetName(Long, "");
    case 10: return config->RemoveSection("b");
    case 11: return config->Import(other);
    case 12: return config->Save();
    case 13: return config->GetFileTime() != nullptr;
    case 14: return Io::GetCommandLineOption("program -o x", "-o", nullptr, 0);
    default: break;  // many children, which have a table
  }
  bool made = true;
  for (char name[] = "a"; made && *name <= 'z'; ++*name) made = config->SetInt(1, name);
  return made;
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t) noexcept { Release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Release(memory); }

TEST(OutOfMemory, LosesNothingButTheCall) {
  TempDir dir;
  dir.WriteFile("base.cfg", "base_of_all { text = \"the text of a section that is imported\" }\n");
  TraceLog();  // at its end it leaves a handler that takes no memory
  ConfSetTrace(2, nullptr);
  for (int operation = 0; operation < Operations; operation++) {
    long live = 0;
    bool failed = true;
    // At first nothing fails, so that what is kept to the end of the process is there.
    for (long n = -1; failed; n++) {
      SCOPED_TRACE(testing::Message() << "operation " << operation << ", allocation " << n);
      dir.WriteFile("t.cfg", "$import \"base\"\nl = @base_of_all.text b { n = [1,2] #c\n }\n");
      ConfigPtr config = Open("t"), other = Open(Long, ConfCreateNew);
      EXPECT_TRUE(config->SetLink(Long, "missing"));
      auto* root = dynamic_cast<confgrove::RootSection*>(config.get());
      auto* other_root = dynamic_cast<confgrove::RootSection*>(other.get());
      bool done = false;
      Countdown = n;
      try {
        done = Work(operation, root, other_root);
      } catch (const std::bad_alloc&) {
      }
      failed = Countdown < 0;
      Countdown = -1;
      EXPECT_EQ(done, !failed || n < 0);
      Sections seen;
      EXPECT_TRUE(IsSound(*root, &seen));
      EXPECT_EQ(seen.count(other_root), other_root->parent_config == root ? 1u : 0u);
      EXPECT_TRUE(done || Work(operation, root, other_root));
      EXPECT_TRUE(config->SetString(Long, "later") && config->Save());
      seen.clear();
      EXPECT_TRUE(IsSound(*root, &seen));
      seen.clear();
      if (other_root->parent_config != nullptr) other.release();
      config.reset();
      other.reset();
      EXPECT_NE(Open("base"), nullptr);
      if (n < 0) live = Live;
      EXPECT_EQ(Live, live);
    }
  }
}
