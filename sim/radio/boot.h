// What the gateway does when it starts: its platform files, its bridges, its radios.
#pragma once

namespace gateway {

// Brings a fresh or running gateway to the state after a boot.
void boot();

// The platform's files as a boot leaves them.
void start_platform();

}  // namespace gateway
