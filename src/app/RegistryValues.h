// Turning raw registry data into the texts the program uses: a value as text, and the set of
// installed products looked up by product code the way a keyed collection does (ignoring case).
#pragma once

#include "app/Services.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumora {

// Type 1 (text): the text as read, without its trailing NUL. Type 4 (32-bit number): the
// hexadecimal forms of the bytes, unpadded, joined from the last byte to the first, read as a
// hexadecimal number and written in decimal. Other types give an empty text. No value when the
// data cannot be read as a number.
std::optional<std::string> registryValueText(const RegistryValue& value);

class InstalledProducts {
  public:
    // Subkey names of the uninstall key; each is cut at its first NUL.
    explicit InstalledProducts(const std::vector<std::string>& subkeyNames);
    bool contains(const std::string& productCode) const;

  private:
    std::set<std::string> keys_; // upper-cased
};

} // namespace lumora
