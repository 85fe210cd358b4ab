// The seam between the library and the files that it writes: the tool defines fopen and chmod itself, so that paths of
// the library's can be led to files in memory, which nobody else sees and which are gone with the process.
#pragma once

#include <map>
#include <string>

#include "wlanctl/base/band.h"

namespace wlanctl {

class MemoryFile {
 public:
  explicit MemoryFile(const std::string& text = "");
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile();

  explicit operator bool() const { return file_ >= 0; }
  std::string path() const;  // opens this file, in this process
  std::string text() const;

 private:
  int file_;
};

// Leads the paths to these files while it lives. One at a time.
class FileRedirect {
 public:
  explicit FileRedirect(const std::map<std::string, const MemoryFile*>& files);
  FileRedirect(const FileRedirect&) = delete;
  FileRedirect& operator=(const FileRedirect&) = delete;
  ~FileRedirect();

 private:
  std::map<std::string, std::string> paths_;
};

// Has the library write the band's dat file to this one while it lives.
class DatRedirect {
 public:
  DatRedirect(Band band, const MemoryFile& file);
  DatRedirect(const DatRedirect&) = delete;
  DatRedirect& operator=(const DatRedirect&) = delete;
  ~DatRedirect();

 private:
  Band band_;
  std::string before_;
};

}  // namespace wlanctl
