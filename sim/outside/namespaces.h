// The namespaces that keep the simulation apart from the machine.
#pragma once

#include <string>

namespace gateway {

// Who runs the program. All but a privileged root need a user namespace, in which the caller's user is root.
enum class Caller { kPrivileged, kRestrictedRoot, kUser };

Caller identify_caller();

// Leaves the machine's namespaces; the next child is process 1 of the simulation.
void enter_namespaces(Caller caller);

// Makes the namespace of the interfaces' far ends, keeps it as the file `path`, and returns to the own one.
void make_air(const std::string& path);

// What to do about a machine that refuses; empty when `error` is not about permissions.
std::string advice_on(int error, Caller caller);

}  // namespace gateway
