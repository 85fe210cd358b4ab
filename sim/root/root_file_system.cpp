#include "sim/root/root_file_system.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>

#include "sim/base/file.h"
#include "sim/base/places.h"

namespace gateway {
namespace {

// The stage on which the new root is put together: the machine's root, the new one, and what goes into its layers.
// Each overlay gets a layer of its own. Any folder that every machine has will do to mount the stage on.
constexpr char kStage[] = "/tmp";
constexpr char kMachine[] = "/machine";
constexpr char kNew[] = "/new";
constexpr char kPrepared[] = "/prepared";
constexpr char kLayers[] = "/layers";
constexpr char kHeld[] = "/held";

// Folders that the gateway has of its own; the machine's are not looked at.
const std::set<std::string> kOwnFolders = {"/dev", "/proc", "/run", "/sys", "/tmp", "/userfs"};

bool mount_at(const char* source, const std::string& target, const char* type, unsigned long flags,
              const char* options = nullptr) {
  return mount(source, target.c_str(), type, flags, options) == 0;
}

void require_mount(const char* source, const std::string& target, const char* type, unsigned long flags,
                   const char* options = nullptr) {
  if (!mount_at(source, target, type, flags, options)) fail("mount " + std::string(type) + " on " + target);
}

bool bind(const std::string& source, const std::string& target) {
  return mount_at(source.c_str(), target, nullptr, MS_BIND | MS_REC);
}

// For kernels, and emulations of one, that have no mount_setattr: the topmost mount alone. What restricts it already has
// to stay in a user namespace.
bool remount_for_reading(const std::string& target) {
  struct statvfs status;
  if (statvfs(target.c_str(), &status) != 0) return false;
  constexpr unsigned long kKept = MS_NOSUID | MS_NODEV | MS_NOEXEC;
  return mount_at(nullptr, target, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY | (status.f_flag & kKept));
}

// What cannot have a private layer may still be read.
bool bind_for_reading(const std::string& source, const std::string& target) {
  if (!bind(source, target)) return false;
  mount_attr attributes = {};
  attributes.attr_set = MOUNT_ATTR_RDONLY;
  if (mount_setattr(AT_FDCWD, target.c_str(), AT_RECURSIVE, &attributes, sizeof attributes) == 0) return true;
  if (errno == ENOSYS && remount_for_reading(target)) return true;
  umount2(target.c_str(), MNT_DETACH);
  return false;
}

void make_mount_point(const std::string& source, const std::string& target) {
  struct stat status;
  if (stat(source.c_str(), &status) != 0) fail("look at " + source);
  if (S_ISDIR(status.st_mode)) {
    make_folder(target);
  } else if (!path_exists(target)) {
    make_folder(parent_of(target));
    write_text(target, "");
  }
}

void pivot(const char* root, const char* old) {
  if (syscall(SYS_pivot_root, root, old) != 0) fail(std::string("change the root to ") + root);
}

std::string top_of(const std::string& path) {
  return path.substr(0, path.find('/', 1));
}

// Overlay options separate paths by colons and options by commas.
std::string escaped(const std::string& path) {
  std::string text;
  for (const char c : path) {
    if (c == ':' || c == ',' || c == '\\') text += '\\';
    text += c;
  }
  return text;
}

}  // namespace

void RootFileSystem::enter() {
  if (!mount_at("none", "/", nullptr, MS_REC | MS_PRIVATE)) fail("make the mount points private");
  require_mount("gateway", kStage, "tmpfs", 0, "mode=0755");
  if (chdir(kStage) != 0) fail("enter the stage");
  for (const char* folder : {kMachine, kNew, kPrepared, kLayers, kHeld}) make_folder(folder + 1);
  pivot(".", kMachine + 1);
  if (chdir("/") != 0) fail("enter the stage");
  if (!bind(kNew, kNew)) fail("make the new root a mount point");

  place_files();
  mirror_machine();
  for (const std::string& folder : plan_.real_folders) keep_real(folder);
  add_system_folders();

  if (umount2(kMachine, MNT_DETACH) != 0) fail("leave the machine's root");
  if (chdir(kNew) != 0) fail("enter the new root");
  pivot(".", ".");
  if (umount2(".", MNT_DETACH) != 0) fail("leave the stage");
  if (chdir("/") != 0) fail("enter the new root");
}

void RootFileSystem::place_files() {
  for (const PlannedFile& file : plan_.files) {
    place_file(file, kOwnFolders.count(top_of(file.path)) != 0 ? kNew : kPrepared);
  }
  make_folder(std::string(kNew) + "/tmp", 01777);
  for (const char* folder : {place::kModules, place::kFlash, place::kProc}) {
    make_folder(std::string(kNew) + folder);
  }
  // The driver changes these for any user: it is the callers' processes that do it here.
  for (const char* folder : {place::kDriver, place::kLists, place::kPayloads}) {
    make_folder(std::string(kNew) + folder, 0777);
  }
  for (const char* lock : {place::kLock, place::kFaultsLock}) write_text(std::string(kNew) + lock, "", 0666);
  if (!plan_.journal.empty()) {
    const std::string journal = std::string(kNew) + place::kJournal;
    if (!bind(kMachine + plan_.journal, journal)) fail("use the journal " + plan_.journal);
  }
}

void RootFileSystem::mirror_machine() {
  for (const std::string& name : names_in(kMachine)) {
    const std::string path = "/" + name;
    if (kOwnFolders.count(path) == 0) mirror_entry(path);
  }
}

void RootFileSystem::mirror_entry(const std::string& path) {
  const std::string source = kMachine + path;
  const std::string target = kNew + path;
  struct stat status;
  if (lstat(source.c_str(), &status) != 0) return;
  if (S_ISLNK(status.st_mode)) {
    char text[4096];
    const ssize_t length = readlink(source.c_str(), text, sizeof text);
    if (length > 0) make_link(std::string(text, static_cast<size_t>(length)), target);
  } else if (S_ISDIR(status.st_mode)) {
    mirror(path);
  } else if (S_ISREG(status.st_mode)) {
    if (!path_exists(target)) write_text(target, "");
    bind_for_reading(source, target);
  }
}

// An unprivileged process cannot layer over a folder with mount points in it: that would uncover what they hide. Such a
// folder is put together from its entries.
void RootFileSystem::mirror(const std::string& folder) {
  std::vector<std::string> inner = mounts_.topmost_below(folder);
  if (!plan_.privileged && !inner.empty()) {
    descend(folder);
    return;
  }
  hold_back(inner);
  const bool layered = overlay(folder);
  hand_back(inner);
  if (layered) {
    for (const std::string& point : inner) {
      if (path_exists(kNew + point)) mirror_entry(point);
    }
    return;
  }
  if (is_folder(kPrepared + folder)) fail("lay a private layer over " + folder);
  bind_for_reading(kMachine + folder, kNew + folder);
}

// What is prepared below a mount point belongs into the mount point's layer, not into that of the folder around it. A
// prepared file that takes a mount point's place leaves nothing to mirror there.
void RootFileSystem::hold_back(std::vector<std::string>& points) {
  const auto is_replaced = [](const std::string& point) {
    return path_exists(kPrepared + point) && !is_folder(kPrepared + point);
  };
  points.erase(std::remove_if(points.begin(), points.end(), is_replaced), points.end());
  for (const std::string& point : points) {
    if (!is_folder(kPrepared + point)) continue;
    make_folder(kHeld + parent_of(point));
    if (rename((kPrepared + point).c_str(), (kHeld + point).c_str()) != 0) fail("hold back " + point);
  }
}

void RootFileSystem::hand_back(const std::vector<std::string>& points) {
  for (const std::string& point : points) {
    if (!is_folder(kHeld + point)) continue;
    make_folder(kPrepared + parent_of(point));
    if (rename((kHeld + point).c_str(), (kPrepared + point).c_str()) != 0) fail("prepare " + point);
  }
}

bool RootFileSystem::overlay(const std::string& folder) {
  const std::string target = kNew + folder;
  const std::string prepared = kPrepared + folder;
  const std::string layer = std::string(kLayers) + "/" + std::to_string(layers_++);
  struct stat status;
  if (stat((kMachine + folder).c_str(), &status) != 0) return false;
  make_folder(layer);
  const bool has_files = is_folder(prepared);
  if (has_files && rename(prepared.c_str(), (layer + "/upper").c_str()) != 0) fail("prepare " + folder);
  make_folder(layer + "/upper");
  make_folder(layer + "/scratch");
  make_folder(target);
  // The layer's folder stands for the machine's from now on. Who owns that may be unknown in a user namespace.
  if (chown((layer + "/upper").c_str(), status.st_uid, status.st_gid) != 0) errno = 0;
  chmod((layer + "/upper").c_str(), status.st_mode & 07777);

  const std::string options =
      "lowerdir=" + escaped(kMachine + folder) + ",upperdir=" + layer + "/upper,workdir=" + layer + "/scratch";
  if (!plan_.privileged && mount_at("gateway", target, "overlay", 0, (options + ",userxattr").c_str())) return true;
  if (mount_at("gateway", target, "overlay", 0, options.c_str())) return true;
  const int error = errno;
  if (has_files) rename((layer + "/upper").c_str(), prepared.c_str());
  errno = error;
  return false;
}

void RootFileSystem::descend(const std::string& folder) {
  make_folder(kNew + folder);
  for (const std::string& name : names_in(kMachine + folder)) {
    const std::string path = folder + "/" + name;
    if (!path_exists(kPrepared + path) || is_folder(kPrepared + path)) mirror_entry(path);
  }
  for (const PlannedFile& file : plan_.files) {
    const bool own = kOwnFolders.count(top_of(file.path)) != 0;
    if (!own && is_within(file.path, folder) && !path_exists(kNew + file.path)) place_file(file, kNew);
  }
}

void RootFileSystem::keep_real(const std::string& path) {
  make_mount_point(kMachine + path, kNew + path);
  if (!bind(kMachine + path, kNew + path)) fail("keep " + path + " real");
}

// Fresh like /tmp, unless something in it has to stay real. An overlay would not do: in a user namespace the machine's
// owner of the folder may be unknown, and then nothing can be written there.
void RootFileSystem::add_temporary_folder(const std::string& folder) {
  const auto is_inside = [&](const std::string& path) { return is_within(path, folder); };
  const auto& real = plan_.real_folders;
  if (!is_folder(kNew + folder) || is_inside(plan_.journal) || std::any_of(real.begin(), real.end(), is_inside)) return;
  require_mount("gateway", kNew + folder, "tmpfs", MS_NOSUID | MS_NODEV, "mode=1777");
}

// The machine's devices that a gateway has as well; its disks stay out of reach.
void RootFileSystem::add_devices() {
  const std::string machine = std::string(kMachine) + "/dev/";
  const std::string own = std::string(kNew) + "/dev/";
  make_folder(own);
  require_mount("gateway", own, "tmpfs", MS_NOSUID, "mode=0755");
  for (const char* name : {"console", "full", "net", "null", "random", "tty", "urandom", "zero"}) {
    const std::string source = machine + name;
    struct stat status;
    if (lstat(source.c_str(), &status) != 0) continue;
    if (S_ISLNK(status.st_mode)) {
      make_link(std::filesystem::read_symlink(source), own + name);
      continue;
    }
    make_mount_point(source, own + name);
    if (!bind(source, own + name)) fail("bind /dev/" + std::string(name));
  }
  // Terminals of its own: one is opened through the folder beside ptmx, which a bound ptmx has lost.
  make_folder(own + "pts");
  require_mount("devpts", own + "pts", "devpts", MS_NOSUID | MS_NOEXEC, "newinstance,mode=0620,ptmxmode=0666");
  make_link("pts/ptmx", own + "ptmx");
  const std::string descriptors = "/proc/self/fd";
  make_link(descriptors, own + "fd");
  make_link(descriptors + "/0", own + "stdin");
  make_link(descriptors + "/1", own + "stdout");
  make_link(descriptors + "/2", own + "stderr");
  make_folder(own + "shm");
  require_mount("gateway", own + "shm", "tmpfs", 0, "mode=1777");
  // Message queues belong to the IPC namespace; without their folder they still work.
  make_folder(own + "mqueue");
  mount_at("mqueue", own + "mqueue", "mqueue", 0);
}

void RootFileSystem::add_system_folders() {
  const std::string root = kNew;
  // A new /proc and /sys are only granted while the machine's own are in sight.
  require_mount("proc", root + place::kProc, "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC);
  // The kernel behind both is the machine's own: what would change it may only be read.
  for (const char* name : {"/sys", "/sysrq-trigger", "/irq", "/bus"}) {
    const std::string path = root + place::kProc + name;
    if (path_exists(path) && !bind_for_reading(path, path)) fail("protect " + path);
  }
  // The kernel has one of its own, which a reboot here does not change.
  const std::string boot_id = root + place::kProc + "/sys/kernel/random/boot_id";
  write_text(root + place::kBootId, "");
  if (path_exists(boot_id) && !bind(root + place::kBootId, boot_id)) fail("give the gateway a boot id");
  make_folder(root + "/sys");
  require_mount("sysfs", root + "/sys", "sysfs", MS_RDONLY | MS_NOSUID | MS_NODEV | MS_NOEXEC);
  make_folder(root + "/proc");
  require_mount("gateway", root + "/proc", "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755");
  add_temporary_folder("/var/tmp");

  add_devices();

  if (plan_.journal.empty() || top_of(plan_.journal) == "/dev" || top_of(plan_.journal) == "/proc") return;
  const auto covers = [&](const std::string& folder) { return is_within(plan_.journal, folder); };
  const auto& real = plan_.real_folders;
  if (std::none_of(real.begin(), real.end(), covers)) keep_real(plan_.journal);
}

}  // namespace gateway
