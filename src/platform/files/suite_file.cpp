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

// What is wrong with the file, or nil. A missing file has no identity, and its bytes are not looked at.
std::optional<std::string> SuiteFile::loadOnce(Loaded& loaded, const Reader& reader) const {
    loaded = {.file = FileDescriptor(file_, O_RDONLY | O_NONBLOCK), .identity = identityOf(file_)};
    if (!loaded.file.isOpen()) {
        return isMissing(errno) ? std::nullopt : std::optional("cannot be read: " + lastErrorText());
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
    return reader(bytes);
}

// A program that writes in place, without the lock, may be at it: what it wrote until then seems damaged. It begins by
// emptying the file, and no other program leaves an empty one.
std::optional<std::string> SuiteFile::load(Loaded& loaded, const Reader& reader) const {
    constexpr int kAttempts = 8;
    constexpr std::chrono::milliseconds kPause(25);
    for (int attempt = 1;; ++attempt) {
        auto damage = loadOnce(loaded, reader);
        if (!damage && loaded.identity == identityOf(file_)) {
            return damage;
        }
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
        const auto damage = load(loaded, [&loaded](const std::string& bytes) -> std::optional<std::string> {
            auto contents = dictionaryFromPropertyList(bytes);
            if (auto* dictionary = std::get_if<Dictionary>(&contents)) {
                loaded.contents = std::make_shared<const Dictionary>(std::move(*dictionary));
                return std::nullopt;
            }
            return std::get<std::string>(std::move(contents));
        });
        if (damage) {
            fail(*damage + "; it is left as it is and reads as empty");
        }
        loaded_ = std::move(loaded);
    }
    return loaded_->contents;
}

SuiteFile::Change SuiteFile::change(const Edit& edit) { return transact(edit, nullptr); }

SuiteFile::Change SuiteFile::make(const Edit& contents, const MayGo& mayGo) { return transact(contents, &mayGo); }

// `mayGo` is null for an edit of what stands there.
SuiteFile::Change SuiteFile::transact(const Edit& edit, const MayGo* mayGo) {
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
    Loaded loaded;
    PropertyList changes;
    edit(changes);
    PropertyList list = changes;
    bool stays = false;
    const auto damage = load(loaded, [&](const std::string& bytes) {
        list = changes;  // without what another attempt has read
        if (mayGo == nullptr) {
            return list.merge(bytes);
        }
        const auto there = dictionaryFromPropertyList(bytes);
        stays = !std::holds_alternative<Dictionary>(there) || !(*mayGo)(std::get<Dictionary>(there));
        return std::optional<std::string>();
    });
    if (mayGo != nullptr && loaded.identity && (stays || damage)) {
        return Change::wasThere;
    }
    if (damage) {
        return fail(*damage + "; it is left as it is and nothing was written");
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
