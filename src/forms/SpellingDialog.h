// The spell check command's view of the checking dialog: it walks the words of one block of
// text (HTML, whose tags and entities it never checks, or plain text), lets the author correct
// them, and gives back the corrected block; no value when the author cancelled or the engine
// failed. The main form is handed one when a dictionary could be loaded; tests hand their own.
#pragma once

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

namespace lumora {

using SpellingDialog =
    std::function<std::optional<std::string>(QWidget* parent, const std::string& block, bool html)>;

} // namespace lumora
