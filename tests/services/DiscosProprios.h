#pragma once

#include <sched.h>
#include <unistd.h>

#include <fstream>
#include <string>

// Gives this process mounts of its own; without privilege only where the system lets anybody have them.
inline bool TemDiscosProprios()
{
    const std::string usuario = "0 " + std::to_string(geteuid()) + " 1";
    const std::string grupo = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWNS) == 0) {
        return true;
    }
    const auto escreve = [](const char *arquivo, const std::string &texto) {
        return (std::ofstream(arquivo) << texto << std::flush).good();
    };
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && escreve("/proc/self/setgroups", "deny") &&
           escreve("/proc/self/uid_map", usuario) && escreve("/proc/self/gid_map", grupo);
}
