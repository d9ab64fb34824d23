#pragma once

#include <filesystem>
#include <string>

namespace mw {

// Small pieces shared by the files written for the outside tools.

// The text in double quotes, as the batch files and scripts quote paths.
std::string Quoted(const std::string& text);

// True for an existing file; an empty name or an unreadable folder is no file.
bool FileThere(const std::filesystem::path& file);

// Deletes the file when it is there; a failure is left for the next step to notice.
void RemoveFile(const std::filesystem::path& file);

// Writes a build file anew. False with the file's name and the reason in error.
bool WriteToolFile(const std::filesystem::path& file, const std::string& text, std::string& error);

} // namespace mw
