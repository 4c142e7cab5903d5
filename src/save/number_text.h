// Numbers as they are written and measured.
#ifndef CONFGROVE_SAVE_NUMBER_TEXT_H
#define CONFGROVE_SAVE_NUMBER_TEXT_H

#include <cstdint>

namespace confgrove {

class TextBuffer;

// Appends `number` as printf's %g gives it, with six significant digits.
void AppendNumber(double number, TextBuffer* out);

// The length of `number` as printf's %f gives it, without the zeros and the point at its end.
std::int32_t TrimmedLength(double number);

}  // namespace confgrove

#endif
