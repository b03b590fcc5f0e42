#include "storage/Paths.h"

#include <algorithm>

namespace lumora {

std::string otherSlashForm(const std::string& path) {
    std::string out = path;
    const char other = kSep == '/' ? '\\' : '/';
    std::replace(out.begin(), out.end(), kSep, other);
    return out;
}

} // namespace lumora
