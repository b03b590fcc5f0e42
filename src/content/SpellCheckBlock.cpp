// Spell check blocks; see SpellCheckBlock.h.
#include "content/SpellCheckBlock.h"

#include "base/TextUtil.h"

namespace lumora {

namespace {

std::size_t characterCount(const std::string& text) {
    std::size_t count = 0;
    for (unsigned char byte : text)
        if ((byte & 0xC0) != 0x80)
            ++count;
    return count;
}

// The byte offset where the character numbered `characters` begins (or the end).
std::size_t byteOffsetOf(const std::string& text, std::size_t characters) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80)
            continue;
        if (seen++ == characters)
            return i;
    }
    return text.size();
}

} // namespace

std::string spellingBlock(const std::string& selectionHtml) {
    return replaceAll(selectionHtml, "\r\n", "");
}

bool startsInTableBody(const std::string& block) {
    return toLowerAscii(block.substr(0, 7)) == "<tbody>";
}

std::string withinSpellingRoom(const std::string& block, const std::string& corrected) {
    const std::size_t room = characterCount(block) + kSpellingRoom;
    return corrected.substr(0, byteOffsetOf(corrected, room));
}

} // namespace lumora
