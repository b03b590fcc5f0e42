// What the zip an LMS imports holds, in each of the three formats a module exports as:
//   scorm12    SCORM 1.2 (imsmanifest.xml) with the AICC course files, as the folder keeps them;
//   scorm2004  SCORM 2004 4th Edition (an imsmanifest.xml of that edition);
//   cmi5       cmi5 (cmi5.xml, the course structure).
// The module folder is never written: the format's import files are made in memory from the
// folder's own identity and files, and exist only inside the zip. The player in every module
// speaks all of them, so the rest of the package is the folder as it is.
#pragma once

#include "storage/CourseModule.h"
#include "storage/LmsFiles.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

enum class PackageFormat { Scorm12, Scorm2004, Cmi5 };

inline constexpr const char* kCmi5File = "cmi5.xml";
// The formats by name, for messages: "scorm12, scorm2004 or cmi5".
inline constexpr const char* kPackageFormatNames = "scorm12, scorm2004 or cmi5";

std::optional<PackageFormat> packageFormatNamed(std::string_view name);
const char* packageFormatName(PackageFormat format);

// A pass mark is held in hundredths of a percent (0..10000), so that the three ways the formats
// write it ("72.5", "0.725") come out exact.
struct PassMark {
    int hundredths = 0;
    std::string percent() const; // "80", "72.5", "66.67"
    std::string scaled() const;  // "0.8", "0.725", "1"
    bool operator==(const PassMark&) const = default;
};
// "80", "72.5" or "66.67": a number from 0 to 100 with at most two decimals; nothing else.
std::optional<PassMark> parsePassMark(std::string_view text);

struct PackageOptions {
    PackageFormat format = PackageFormat::Scorm12;
    std::optional<PassMark> passMark; // an Evaluation's; none leaves it to the LMS
};

// One file of the zip: copied from sourcePath, or, when that is empty, the bytes made here.
struct PackageEntry {
    std::string name; // relative, '/' separators
    std::string sourcePath;
    std::string bytes;
};

struct PackagePlan {
    std::vector<PackageEntry> entries; // the format's import file first
    std::vector<std::string> problems; // why the package cannot be made; entries empty then
};

// The id and folder the module's package carries: its manifest's, while that manifest holds an
// id of its own recorded for this folder (see LmsFiles.h). No value for a module that was
// never saved for SCORM/AICC in this folder: its package would get an identity no later package
// repeats, and an LMS would take each upload for a new course.
std::optional<LmsModuleInfo> packageIdentity(const CourseModule& module);

// The entries of the module's package in the given format, or the problems that forbid it
// (saved without SCORM/AICC, no identity of its own yet, a pass mark for a module that is no
// Evaluation, the launch file missing). Reads the folder; writes nothing. Throws FileError
// when the folder cannot be read.
PackagePlan planPackage(const CourseModule& module, const PackageOptions& options);

// --- the import files of the other formats, pure functions over text -----------------------

// The SCORM 2004 4th Edition manifest: the same identifiers as the 1.2 manifest, one SCO
// listing `files`, and with a pass mark the item's primary objective satisfied by measure.
std::string scorm2004ManifestXml(const LmsModuleInfo& info, const std::vector<std::string>& files,
                                 std::optional<PassMark> passMark = {});

// The cmi5 course structure: one course and one AU launching the frameset, both named by IRIs
// derived from the module id. moveOn "Completed" for a Lesson or a Survey; for an Evaluation
// "Passed" with a pass mark (the AU's masteryScore), else "CompletedOrPassed".
std::string cmi5Xml(const LmsModuleInfo& info, const std::string& moduleType,
                    std::optional<PassMark> passMark = {});
std::string cmi5CourseIri(std::string_view moduleId);
std::string cmi5AuIri(std::string_view moduleId);

} // namespace lumora
