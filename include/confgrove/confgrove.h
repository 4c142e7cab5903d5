// SPDX-License-Identifier: MIT
// All of confgrove.
#ifndef CONFGROVE_CONFGROVE_H
#define CONFGROVE_CONFGROVE_H

#include <confgrove/config.h>
#include <confgrove/export.h>
#include <confgrove/io.h>
#include <confgrove/section.h>
#include <confgrove/symbols.h>

#endif
