// Numbers as they are written and measured.
#ifndef CONFGROVE_SAVE_NUMBER_TEXT_H
#define CONFGROVE_SAVE_NUMBER_TEXT_H

#include <cstddef>
#include <cstdint>

namespace confgrove {

// What WriteNumber asks for: its longest text, "-1.23457e-308", and what it puts behind a text.
constexpr std::size_t NumberRoom = 24;

// Writes `number` as printf's %g gives it, with six significant digits, to `out`, where NumberRoom
// bytes are free. The end of the text; the bytes behind it are not kept.
char* WriteNumber(double number, char* out);

// The length of `number` as printf's %f gives it, without the zeros and the point at its end.
std::int32_t TrimmedLength(double number);

}  // namespace confgrove

#endif
