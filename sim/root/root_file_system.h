// The simulation's root file system: the machine's, with a private layer over every folder of it.
#pragma once

#include <string>
#include <vector>

#include "sim/root/gateway_files.h"
#include "sim/root/mount_table.h"

namespace gateway {

struct RootPlan {
  bool privileged = false;
  std::vector<PlannedFile> files;
  std::vector<std::string> real_folders;
  // The user's journal; empty when it was not asked for.
  std::string journal;
};

// Builds the root and moves the calling process into it. Everything is in memory and goes with the mount namespace.
class RootFileSystem {
 public:
  explicit RootFileSystem(RootPlan plan) : plan_(std::move(plan)) {}

  void enter();

 private:
  void place_files();
  void mirror_machine();
  void mirror(const std::string& folder);
  void hold_back(std::vector<std::string>& points);
  void hand_back(const std::vector<std::string>& points);
  bool overlay(const std::string& folder);
  void descend(const std::string& folder);
  void mirror_entry(const std::string& path);
  void keep_real(const std::string& path);
  void add_temporary_folder(const std::string& folder);
  void add_devices();
  void add_system_folders();

  RootPlan plan_;
  MountTable mounts_;
  int layers_ = 0;
};

}  // namespace gateway
