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
#include "platform/files/private/whole_file.h"
#include "platform/files/property_list.h"
#include "platform/values/value.h"

namespace lunabrook {

class SuiteFile {
public:
    // With `dropsWrites` every transaction succeeds and changes nothing. `patience` is for the lock.
    SuiteFile(std::filesystem::path file, bool dropsWrites, FaultListener faults,
              std::chrono::milliseconds patience = kPatience);

    // What the file holds now; loaded again only when its identity changed. Empty when missing or damaged (told once).
    std::shared_ptr<const Dictionary> snapshot();

    // One transaction: what the edit says about a key goes before what the file says.
    // A fault is told when it failed, and none when a file was there that stays: it is whole then.
    enum class Change { written, failed, wasThere };
    using Edit = std::function<void(PropertyList&)>;
    // Where it is given, the edit says the whole contents, and a file goes only when it may.
    using MayGo = std::function<bool(const Dictionary& there)>;
    Change change(const Edit& edit, const MayGo& mayGo = nullptr);

    bool synchronize();

private:
    // The open descriptor keeps the inode's number from being given to another file: without it a file replaced twice
    // within one tick of the clock could carry the first one's identity.
    struct Loaded {
        FileDescriptor file;
        std::optional<FileIdentity> identity;  // nil when there is no file
        std::shared_ptr<const Dictionary> contents = std::make_shared<const Dictionary>();
    };

    Change fail(const std::string& what) const;
    // What is wrong with the file, or nil.
    std::optional<std::string> loadOnce(Loaded& loaded, PropertyList& list) const;
    std::optional<std::string> load(Loaded& loaded, PropertyList& list) const;

    std::filesystem::path file_;
    bool dropsWrites_;
    FaultListener faults_;
    std::chrono::milliseconds patience_;
    std::optional<Loaded> loaded_;
};

}  // namespace lunabrook
