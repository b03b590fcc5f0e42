// The texts of the main form's item lists and the small rules of its frame, as pure functions
// over the module so they can be checked without a window.
#pragma once

#include "storage/CourseModule.h"

#include <string>
#include <vector>

namespace lumora {

// Page 0 is listed by its title alone, page n as "n. " + title: "Intro", "1. Basics".
std::string getNumberedPageText(const CourseModule& module, std::size_t index);
// Questions are numbered from 1, with paragraph tags and non-breaking spaces removed.
std::string getNumberedQuestionText(const CourseModule& module, std::size_t index);

// lstQAndA's entries: every item but those whose question text is empty.
std::vector<std::string> questionListTexts(const CourseModule& module);
// The items those entries stand for, in order.
std::vector<std::size_t> listedQuestions(const CourseModule& module);

// A definition as its field shows it, lines ending in LF. Its line breaks come back from the
// module files as the two characters \n, which the player's script reads as a line break:
// the field shows them as one too, and the next save writes them the same way.
std::string definitionForField(const std::string& definition);

// The flag text a ticked or cleared check box stores ("true" / "false"): checkStateToFlag
// counts in the classic check states, where a ticked box is 1 (Qt's Checked is 2).
std::string flagOfCheckBox(bool checked);

// The caption of the main form for the open module.
std::string mainCaption(const CourseModule& module);

// A page title as stored: the text with every CR LF pair removed.
std::string pageTitleFromField(const std::string& text);

// The resolution check: a maximised form on a screen under 480 pixels high goes back to normal.
bool resolutionTooLow(bool maximised, int screenHeightPixels);

// The form's minimum size, 9270 x 7300 twips at 15 twips per pixel.
inline constexpr int kTwipsPerPixel = 15;
inline constexpr int kMinimumWidthPx = (9270 + kTwipsPerPixel - 1) / kTwipsPerPixel;  // 618
inline constexpr int kMinimumHeightPx = (7300 + kTwipsPerPixel - 1) / kTwipsPerPixel; // 487

} // namespace lumora
