// Ten tasks with settings, each done by several libraries in the way that each means it to be done.
// docs/values.md shows them side by side.
#ifndef BENCH_VALUES_TASKS_H
#define BENCH_VALUES_TASKS_H

#include <map>
#include <string>
#include <vector>

struct Limits {
  int requests = 60;
  double timeout = 30;
};

struct Upstream {
  std::string host;  // required
  int port = 80;
};

enum class Mode { Fast, Safe };

// What file names of the library end in: ".cfg".
extern const char* const Extension;

// Each opens `file` anew, but for the last. What is said in texts is for people.
int DefaultValue(const std::string& file);           // "workers", 4 if it isn't there
std::string RequiredValue(const std::string& file);  // "name"
int RangeChecked(const std::string& file);           // "port", 1 to 65535
Mode Enumeration(const std::string& file);           // "mode", "fast" or "safe"
std::vector<double> Array(const std::string& file);  // "levels"
Limits NestedStruct(const std::string& file);        // "limits"
std::map<std::string, Upstream> TableOfStructs(const std::string& file);  // "upstreams"

// All that is wrong with "port", "mode", "levels", "limits" and "upstreams" of a faulty file, and
// the settings at its top and in "limits" that aren't known.
std::vector<std::string> AllFaults(const std::string& file);
std::vector<std::string> UnknownSettings(const std::string& file);

// Makes "limits.requests" 240 in the file.
void WriteBack(const std::string& file);

#endif
