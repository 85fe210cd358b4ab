// Small files of the tool's own under /var/run: readable by their owner alone, versioned, checked before use, replaced
// as a whole.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

class Report;

// The text of such a file; none when it is missing, of another format or version, damaged, or somebody else's.
std::optional<std::string> read_state_file(const std::string& path, const std::string& format, int version);

// False with a problem when it cannot be written.
bool write_state_file(const std::string& path, const std::string& format, int version, const std::string& text,
                      Report& report);

// A file of other bytes in the same way, without a head. False with errno when it cannot be written.
bool write_own_file(const std::string& path, const std::string& bytes);

// A text with the head that such a file has, and without it again; none when the head is another one, or the text
// was changed.
std::string with_head(const std::string& format, int version, const std::string& text);
std::optional<std::string> without_head(const std::string& bytes, const std::string& format, int version);

// Has the names in the folder of that path on the disk: a power cut finds them then.
void finish_folder_of(const std::string& path);

// Whether there is such a name, be it of a damaged file.
bool is_state_file_there(const std::string& path);

// Whether there is such a file that can be had, and is none that the tool has written.
bool is_state_file_damaged(const std::string& path, const std::string& format, int version);

// Why such a file, be it well, cannot be read by this user at this moment: the reason of errno, and who could; none where
// its bytes can be had, or there is none.
struct Unreadable {
  std::string reason;
  std::string next;
};
std::optional<Unreadable> unreadable_state_file(const std::string& path);

// False when it is there and cannot be removed, with errno.
bool remove_state_file(const std::string& path);

// A sum of the text, to see whether it changed.
std::string sum_of(const std::string& text);

// Which boot this is: what such a file says is true of one only.
std::string this_boot();

}  // namespace wlanctl
