// The host's locale changes nothing that is read or written, and the library leaves it alone.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <sstream>

#include "support.h"
#include "systems.h"

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
  const std::string expected = Work();
  const char* const german = ThisSystem.german;
  const HostLocale host(german);
  if (!host.IsInUse()) GTEST_SKIP() << "there is no locale " << german;
  char text[8];
  std::snprintf(text, sizeof text, "%.1f", .5);
  std::ostringstream grouped;
  grouped << 1234567;
  EXPECT_EQ(text + grouped.str(), ThisSystem.german_numbers);
  EXPECT_EQ(Work(), expected);
  EXPECT_TRUE(host.IsInUse());
  EXPECT_STREQ(setlocale(LC_ALL, nullptr), german);
}
