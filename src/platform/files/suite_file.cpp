#include "platform/files/private/suite_file.h"

#include <thread>
#include <utility>

namespace lunabrook {

namespace {

bool isMissing(int error) { return error == ENOENT || error == ENOTDIR; }

}  // namespace

SuiteFile::SuiteFile(std::filesystem::path file, bool dropsWrites, FaultListener faults,
                     std::chrono::milliseconds patience)
    : file_(std::move(file)), dropsWrites_(dropsWrites), faults_(std::move(faults)), patience_(patience) {}

SuiteFile::Change SuiteFile::fail(const std::string& what) const {
    faults_({.file = file_, .what = what});
    return Change::failed;
}

std::optional<std::string> SuiteFile::loadOnce(Loaded& loaded, PropertyList& list) const {
    list = {};
    loaded = {.file = FileDescriptor(file_, O_RDONLY | O_NONBLOCK), .identity = std::nullopt};
    if (!loaded.file.isOpen()) {
        if (isMissing(errno)) {
            return std::nullopt;  // and it has no identity, even when it is made right now
        }
        const std::string error = lastErrorText();
        loaded.identity = identityOf(file_);
        return "cannot be read: " + error;
    }
    struct stat status = {};
    ::fstat(loaded.file.number(), &status);
    loaded.identity.emplace(status);  // what was opened may be another file already
    if (!S_ISREG(status.st_mode)) {
        return "is not a file";
    }
    std::string bytes;
    if (!readAll(loaded.file, kMaximumPropertyListBytes, bytes)) {
        return "cannot be read: " + lastErrorText();
    }
    return list.merge(bytes);
}

// A program that writes in place, without the lock, may be at it: what it wrote until then seems damaged. It begins by
// emptying the file, and no other program leaves an empty one.
std::optional<std::string> SuiteFile::load(Loaded& loaded, PropertyList& list) const {
    constexpr int kAttempts = 8;
    constexpr std::chrono::milliseconds kPause(25);
    for (int attempt = 1;; ++attempt) {
        auto damage = loadOnce(loaded, list);
        if (damage) {
            std::this_thread::sleep_for(kPause);
        }
        const bool isEmpty = loaded.identity && loaded.identity->size == 0;
        if (attempt == kAttempts || (loaded.identity == identityOf(file_) && !isEmpty)) {
            return damage;
        }
    }
}

std::shared_ptr<const Dictionary> SuiteFile::snapshot() {
    if (!loaded_ || loaded_->identity != identityOf(file_)) {
        Loaded loaded;
        PropertyList list;
        const auto damage = load(loaded, list);
        if (damage) {
            fail(*damage + "; it is left as it is and reads as empty");
        }
        loaded.contents = std::make_shared<const Dictionary>(list.dictionary());
        loaded_ = std::move(loaded);
    }
    return loaded_->contents;
}

SuiteFile::Change SuiteFile::change(const Edit& edit, const MayGo& mayGo) {
    if (dropsWrites_) {
        return Change::written;
    }
    const std::filesystem::path target = withoutLinks(file_);
    if (const auto error = makeFolder(target.parent_path())) {
        return fail("cannot be written: " + *error);
    }
    std::filesystem::path lockFile = target;
    lockFile += ".lock";
    const FileDescriptor locked(lockFile, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK, kPrivateFile);
    if (const auto error = lock(locked, patience_)) {
        return fail("cannot be locked, so nothing was written: " + *error);
    }
    PropertyList list;
    edit(list);
    Loaded loaded;
    PropertyList there;
    const auto damage = load(loaded, there);
    if (mayGo && loaded.identity && (damage || !mayGo(there.dictionary()))) {
        return Change::wasThere;
    }
    if (damage) {
        return fail(*damage + "; it is left as it is and nothing was written");
    }
    if (!mayGo) {
        list.merge(there);
    }
    const auto bytes = list.binary();
    if (const auto* unwritable = std::get_if<PropertyList::Unwritable>(&bytes)) {
        return fail(unwritable->why + "; nothing was written");
    }
    takeOwnerFrom(loaded.identity ? target : target.parent_path(), locked);
    if (const auto error = replaceFile(target, std::get<std::string>(bytes))) {
        return fail("cannot be written and stays as it was: " + *error);
    }
    return Change::written;  // closing the lock file unlocks
}

bool SuiteFile::synchronize() {
    const std::filesystem::path target = withoutLinks(file_);
    for (const std::filesystem::path& path : {target, target.parent_path()}) {
        const FileDescriptor opened(path, O_RDONLY | O_NONBLOCK);
        const bool missing = !opened.isOpen() && isMissing(errno);
        if (!missing && (!opened.isOpen() || ::fsync(opened.number()) != 0)) {
            fail("cannot be put on the disk: " + lastErrorText());
            return false;
        }
    }
    return true;
}

}  // namespace lunabrook
