// The longest progress string (cmi.suspend_data, AICC [Core_Lesson]) the learner player can
// produce for a module, so a save can warn before a module outgrows the LMS's 4096 characters.
#pragma once

#include "storage/CourseModule.h"

#include <cstddef>

namespace lumora {

// The SCORM 1.2 limit of cmi.suspend_data.
inline constexpr std::size_t kSuspendDataLimit = 4096;

// The player's encoding, per module type (every character from a 64-letter alphabet):
//   Lesson      "L", then the seen pages as a bit field, six pages per character.
//   Evaluation  "E", a phase letter, then per asked question its written position as a
//               fixed-width number (wide enough for the pool) and its chosen options as a bit
//               field.
//   Survey      "S", a phase letter, then per question the rating as a number wide enough for
//               "no rating" plus one value per option.
// Counts only what the writer writes: items with a question text and a first option, options
// with a display text. 0 for an unknown module type.
std::size_t suspendDataWorstCase(const CourseModule& module);

// Base-64 digits needed to write every value below `count` (at least one).
std::size_t suspendDigits(std::size_t count);

} // namespace lumora
