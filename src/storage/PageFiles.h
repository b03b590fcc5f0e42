// Lesson page files: the template's page skeleton with the page content spliced between the
// lines holding <LUMApageContent> and </LUMApageContent>.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora {

inline constexpr const char* kStartMarker = "<LUMApageContent>";
inline constexpr const char* kEndMarker = "</LUMApageContent>";

// The page file's text for the given skeleton lines and stored content.
std::string buildPageFile(const std::vector<std::string>& skeleton, const std::string& stored);
// The stored text between the marker lines of a page file's text (lines end in CR LF or LF),
// each line followed by CR LF.
std::string contentBetweenMarkers(std::string_view text);

// The skeleton every page file is built from: the template's "page0.html".
std::string pageSkeletonPath(const CourseModule& module);
// Writes page i from skeleton lines already read, so a save reads the skeleton only once.
void writePageFileFrom(const CourseModule& module, std::size_t i,
                       const std::vector<std::string>& skeleton, const ContentPaths& paths);

void WritePageFile(const CourseModule& module, std::size_t i, const ContentPaths& paths);
std::string ReadPageContent(const CourseModule& module, std::size_t i, const ContentPaths& paths);
void LoadPageContent(CourseModule& module, std::size_t i, const ContentPaths& paths);

} // namespace lumora
