// Settings as C++ values: typed reads with all faults at their places, and structs that are
// described once to be read, checked, written and documented. Header only.
#ifndef CONFGROVE_VALUES_H
#define CONFGROVE_VALUES_H

#include <confgrove/values/document.h>
#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>
#include <confgrove/values/open.h>
#include <confgrove/values/reader.h>
#include <confgrove/values/rules.h>
#include <confgrove/values/set.h>
#include <confgrove/values/structs.h>
#include <confgrove/values/write.h>

#endif
