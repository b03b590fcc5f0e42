// Module files as lines of text. Reading accepts CR LF or LF and decodes a file that is not
// valid UTF-8 as Windows-1252 (modules written by older tools). Writing is always safe: the
// lines go to a temporary file in the same folder, which is renamed over the target only when
// everything was written, so a failure never leaves a half-written module file behind.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// A file-system failure: which file, and why. Forms and the command line report it as an
// "Error" message naming the file and the reason.
class FileError : public std::runtime_error {
  public:
    FileError(std::string path, std::string reason);
    const std::string& path() const { return path_; }
    const std::string& reason() const { return reason_; }

  private:
    std::string path_;
    std::string reason_;
};

// Decodes bytes to UTF-8: valid UTF-8 passes unchanged (a leading byte-order mark is dropped),
// anything else is read as Windows-1252.
std::string decodeText(const std::string& bytes);
std::string decodeText(std::string&& bytes); // no copy of text that is already UTF-8
// The same text as decodeText(bytes), viewed in place when the bytes are UTF-8 already (else
// the bytes are replaced by their decoding). The view lives as long as the bytes are unchanged.
std::string_view decodedView(std::string& bytes);

// Splits text into lines at CR LF or LF. A final line break does not start another line.
std::vector<std::string> splitLines(const std::string& text);

// Reads a whole file as bytes; throws FileError when it cannot.
std::string readFileBytes(const std::string& path);
// The same into a buffer the caller keeps, so reading many files reuses one allocation.
void readFileInto(const std::string& path, std::string& bytes);

// Reads and decodes a text file into lines; throws FileError when it cannot.
std::vector<std::string> readTextLines(const std::string& path);

// Collects lines, each ended by CR LF as it is written, then commits them atomically.
class SafeTextWriter {
  public:
    explicit SafeTextWriter(std::string path);
    void WriteLine(const std::string& text);
    void write(const std::string& raw); // no line end added
    // Writes everything to "<name>.tmp-lumora" beside the target and renames it over the
    // target. Throws FileError, leaving the old file untouched.
    void commit();
    // Like commit(), but the target must already exist (the stylesheet is never created).
    void commitExisting();
    const std::string& path() const { return path_; }
    const std::string& contents() const { return buffer_; }

  private:
    std::string path_;
    std::string buffer_;
};

// Writes bytes to a file safely (temporary file and rename). Throws FileError, also when the
// target is read-only (see ensureNotReadOnly).
void writeFileAtomically(const std::string& path, const std::string& bytes);

// What a safe write names its temporary file: the target's name and this suffix. One found
// later is a write that never finished (the program killed, the machine off).
inline constexpr std::string_view kUnfinishedWriteSuffix = ".tmp-lumora";

// Throws FileError ("Permission denied") when the file exists and grants no one write access.
// Renaming over a file needs only a writable folder, so without this test a save would replace
// a file the author protected, and drop its protection with its contents.
void ensureNotReadOnly(const std::string& path);

// Removes the temporary files of unfinished safe writes anywhere under the folder. Throws
// FileError when one cannot be removed.
void removeUnfinishedWrites(const std::string& folder);

} // namespace lumora
