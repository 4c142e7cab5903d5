// SPDX-License-Identifier: MIT
// Config: a configuration as a whole, and the way to one.
#ifndef CONFGROVE_CONFIG_H
#define CONFGROVE_CONFIG_H

#include <confgrove/export.h>
#include <confgrove/io.h>
#include <confgrove/section.h>

#include <cstdint>

// The root of a configuration: the tree of one file, which falls through to the files it imports.
//
// The host owns what ConfCreate gives and ends it by `delete` or RemoveSection(""); either takes
// the whole tree and all imported configurations with it.
class CONFGROVE_API Config : public virtual Section {
 public:
  // Writes the tree to its file, in canonical form; imported trees are not written. False, with a
  // message, if the root is read-only or the file can't be opened. True means that the tree was
  // handed to the system, not that it is on the disk.
  virtual bool Save() = 0;

  // Makes `config` an import of this root, which owns it from then on. Lookups fall through to it,
  // and Save writes a $import line for it. False, nothing changed and `config` still the caller's,
  // if it is null, this root is read-only, a file of `config` belongs to this configuration
  // already, `config` is imported by another, or the chain of imports would exceed 100 files.
  virtual bool Import(Config* config) = 0;

  // The path of the root's file, from the settings of this moment. Never null. Good until the next
  // call on any root.
  virtual const char* GetFileName() = 0;

  // When that file was last changed, in local time: "Sun Nov 22 21:49:53 2026". Null if it can't be
  // opened. Good until the next call on any root.
  virtual const char* GetFileTime() = 0;
};

// What ConfCreate does with a file, and what a missing or faulty one means.
enum ConfCreateFlag : std::int32_t {
  ConfCreateNew = 0,           // an empty configuration; the file isn't looked at
  ConfCreateOpen = 1,          // null if missing, null if faulty
  ConfCreateOpenReadOnly = 2,  // the same, and the tree can't be changed
  ConfCreateOpenOrNew = 3,     // empty if missing, null if faulty
  ConfCreateOpenAlways = 4     // empty if missing or faulty
};

enum ConfNameType : std::int32_t {
  ConfNameRelative = 0,  // the name is relative to the root directory
  ConfNameFullPath = 1   // a path; its directory and extension become the process's settings
};

// Opens or makes the configuration `name`. Blanks around the name don't count. To a name that
// doesn't hold the default extension it is appended, and the root directory is put in front of it.
// Null for an empty name, and as `flag` says. The caller owns the result. `name` must not be null.
CONFGROVE_API Config* ConfCreate(const char* name, ConfCreateFlag flag,
                                 ConfNameType name_type = ConfNameRelative);

// Sets the root directory of file names (blanks around it removed, a separator added; "" is the
// working directory), the default extension (null is ".cfg"; a point is put in front if it lacks)
// and the trace. Never needed: the process starts with "", ".cfg", 0 and standard error. `root`
// must not be null.
CONFGROVE_API void ConfSet(const char* root, const char* extension, int trace_level,
                           TraceFunction* handler);

// The root directory, "" or ending in a separator. Good until it next changes.
CONFGROVE_API const char* ConfGetRoot();

// Sets how much is traced: 0 errors and failed lookups; 1 also warnings, refusals and progress; 2
// also files that can't be opened. A null `handler` leaves the handler as it is.
CONFGROVE_API void ConfSetTrace(int trace_level, TraceFunction* handler);

#endif
