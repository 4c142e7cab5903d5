// The host's locale changes nothing that is read or written, and the library leaves it alone.
#include <gtest/gtest.h>
#include <locale.h>

#include <cstdio>
#include <locale>
#include <sstream>

#include "support.h"

namespace {

// Reads, changes and saves; all that came out on the way.
std::string Work() {
  TempDir dir;
  TraceLog log;
  const ConfigPtr c =
      ParseText("t", "a=1234.5678 #1\nb=[.5,1e3] #2\n\xC4\xE8=\"1,5\" c=1234567#3\n");
  double number = 0;
  EXPECT_TRUE(c->GetDouble(&number, "a") && number == 1234.5678 && c->SetDouble(1e6 + .5, "d.e"));
  EXPECT_EQ(ParseText("faulty", "a=1,5"), nullptr);
  return Saved(c.get()) + log.Text() + std::to_string(std::string(c->GetFileTime()).size());
}

}  // namespace

TEST(Locale, ChangesNothingAndStays) {
  const char german[] = "de_DE.UTF-8";
  const std::string expected = Work();
  const std::locale before = std::locale::global(std::locale(german));  // throws if it is missing
  const locale_t thread = newlocale(LC_ALL_MASK, german, locale_t{});
  const locale_t thread_before = uselocale(thread);
  char text[8];
  std::snprintf(text, sizeof text, "%.1f", .5);
  std::ostringstream grouped;
  grouped << 1234567;
  EXPECT_EQ(text + grouped.str(), "0,51.234.567");
  EXPECT_EQ(Work(), expected);
  EXPECT_EQ(uselocale(thread_before), thread);
  freelocale(thread);
  EXPECT_STREQ(setlocale(LC_ALL, nullptr), german);
  EXPECT_EQ(std::locale::global(before).name(), german);
}
