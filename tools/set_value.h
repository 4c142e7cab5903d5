// Giving a section a value.
#ifndef CONFGROVE_TOOLS_SET_VALUE_H
#define CONFGROVE_TOOLS_SET_VALUE_H

#include <string>
#include <vector>

#include "change.h"

namespace confgrove::Tool {

// What a value is to be: what the section has been, or for a new one what it looks like; or what
// the call says.
enum class ValueKind { Kept, String, Number, Link };

// Gives the section at `path` the value that `words` mean. Refuses what isn't of the kind.
void SetValue(Change* change, const std::string& path, const std::vector<std::string>& words,
              ValueKind kind);

// Notes that `path` isn't there and what is nearest to it, or refuses it if `existing_only`. To be
// called before a change makes it.
void NoteIfNew(Change* change, const std::string& path, bool existing_only);

}  // namespace confgrove::Tool

#endif
