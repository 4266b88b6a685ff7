// The file behind a suite of preferences: one loaded snapshot, and transactions under a lock.
//
// Two programs on one file: A locks, loads what stands there now, changes its keys, writes a temporary file, renames it
// over the old one, unlocks; B's next read sees another inode and loads again.

#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/files/fault.h"
#include "platform/files/property_list.h"
#include "platform/values/value.h"

namespace lunabrook {

class SuiteFile {
public:
    // With `dropsWrites` every transaction succeeds and changes nothing.
    SuiteFile(std::filesystem::path file, bool dropsWrites, FaultListener faults);
    ~SuiteFile();
    SuiteFile(const SuiteFile&) = delete;
    SuiteFile& operator=(const SuiteFile&) = delete;

    // What the file holds now; loaded again only when its identity changed. Empty when missing or damaged (told once).
    std::shared_ptr<const Dictionary> snapshot();

    // One transaction: what the edit says about a key goes before what the file says. False with a fault told when
    // nothing was written: the old file is whole then.
    bool change(const std::function<void(PropertyList&)>& edit);

    bool synchronize();

private:
    struct Loaded;

    bool fail(const std::string& what) const;
    std::optional<std::string> load(Loaded& loaded) const;
    bool changeLocked(const std::function<void(PropertyList&)>& edit);
    bool replaceBy(const std::string& bytes) const;

    std::filesystem::path file_;
    bool dropsWrites_;
    FaultListener faults_;
    std::unique_ptr<Loaded> loaded_;
};

}  // namespace lunabrook
