// Conversions between "#RRGGBB" and the platform colour number 0x00BBGGRR.
#pragma once

#include <string>

namespace lumora {

long hexToColor(const std::string& hex);
std::string colorToHex(long color);

} // namespace lumora
