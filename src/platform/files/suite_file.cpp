#include "platform/files/suite_file.h"

#include <sys/file.h>
#include <sys/stat.h>

#include "platform/files/private/atomic_file.h"
#include "platform/files/private/file_descriptor.h"
#include "platform/files/private/file_identity.h"

namespace lunabrook {

namespace {

bool readAll(const FileDescriptor& file, std::size_t size, std::string& bytes) {
    bytes.resize(size);
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count = ::read(file.number(), bytes.data() + filled, size - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            bytes.resize(filled);
            return count == 0;
        }
        filled += static_cast<std::size_t>(count);
    }
    return true;
}

// A link stays a link: what it points to is what is replaced.
std::filesystem::path withoutLinks(const std::filesystem::path& file) {
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(file, error);
    return error ? file : target;
}

}  // namespace

// The open descriptor keeps the inode's number from being given to another file: without it a file replaced twice
// within one tick of the clock could carry the first one's identity.
struct SuiteFile::Loaded {
    FileDescriptor file;
    std::optional<FileIdentity> identity;  // nil when there is no file
    std::string bytes;
    std::shared_ptr<const Dictionary> contents = std::make_shared<const Dictionary>();
};

SuiteFile::SuiteFile(std::filesystem::path file, bool dropsWrites, FaultListener faults)
    : file_(std::move(file)), dropsWrites_(dropsWrites), faults_(std::move(faults)) {}

SuiteFile::~SuiteFile() = default;

bool SuiteFile::fail(const std::string& what) const {
    faults_({.file = file_, .what = what});
    return false;
}

// What is wrong with the file, or nil; then its bytes are loaded. A missing file has no identity.
std::optional<std::string> SuiteFile::load(Loaded& loaded) const {
    constexpr int kAttempts = 3;  // a program that writes in place may be at it while the bytes are read
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        loaded.file = FileDescriptor(file_, O_RDONLY | O_NONBLOCK);
        if (!loaded.file.isOpen()) {
            const bool missing = errno == ENOENT || errno == ENOTDIR;
            return missing ? std::nullopt : std::optional("cannot be read: " + lastErrorText());
        }
        struct stat status = {};
        ::fstat(loaded.file.number(), &status);
        loaded.identity.emplace(status);
        if (!S_ISREG(status.st_mode)) {
            return "is not a file";
        }
        if (status.st_size > static_cast<off_t>(kMaximumPropertyListBytes)) {
            return "is larger than 64 MiB";
        }
        if (!readAll(loaded.file, static_cast<std::size_t>(status.st_size), loaded.bytes)) {
            return "cannot be read: " + lastErrorText();
        }
        if (::fstat(loaded.file.number(), &status) == 0 && FileIdentity(status) == *loaded.identity) {
            break;
        }
    }
    return std::nullopt;
}

std::shared_ptr<const Dictionary> SuiteFile::snapshot() {
    if (!loaded_ || loaded_->identity != identityOf(file_)) {
        auto loaded = std::make_unique<Loaded>();
        std::optional<std::string> damage = load(*loaded);
        if (!damage && loaded->identity) {
            auto contents = dictionaryFromPropertyList(std::exchange(loaded->bytes, {}));
            if (auto* dictionary = std::get_if<Dictionary>(&contents)) {
                loaded->contents = std::make_shared<const Dictionary>(std::move(*dictionary));
            } else {
                damage = std::get<std::string>(std::move(contents));
            }
        }
        if (damage) {
            fail(*damage + "; it is left as it is and reads as empty");
        }
        if (!loaded->identity) {
            loaded->identity = identityOf(file_);  // a file that cannot be opened is told once, too
        }
        loaded_ = std::move(loaded);
    }
    return loaded_->contents;
}

bool SuiteFile::change(const std::function<void(PropertyList&)>& edit) {
    if (dropsWrites_) {
        return true;
    }
    std::error_code error;
    std::filesystem::create_directories(file_.parent_path(), error);
    if (error) {
        return fail("cannot be written: " + error.message());
    }
    std::filesystem::path lockFile = file_;
    lockFile += ".lock";
    const FileDescriptor lock(lockFile, O_RDWR | O_CREAT, kPrivateFile);
    if (!lock.isOpen()) {
        return fail("cannot be locked, so nothing was written: " + lastErrorText());
    }
    while (::flock(lock.number(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            return fail("cannot be locked, so nothing was written: " + lastErrorText());
        }
    }
    return changeLocked(edit);  // closing the lock file unlocks
}

bool SuiteFile::changeLocked(const std::function<void(PropertyList&)>& edit) {
    Loaded loaded;
    PropertyList list;
    edit(list);
    std::optional<std::string> damage = load(loaded);
    if (!damage && loaded.identity) {
        damage = list.merge(loaded.bytes);
    }
    if (damage) {
        return fail(*damage + "; it is left as it is and nothing was written");
    }
    const auto bytes = list.binary();
    if (const auto* unwritable = std::get_if<PropertyList::Unwritable>(&bytes)) {
        return fail(unwritable->why + "; nothing was written");
    }
    return replaceBy(std::get<std::string>(bytes));
}

bool SuiteFile::replaceBy(const std::string& bytes) const {
    const std::filesystem::path target = withoutLinks(file_);
    std::filesystem::path temporary = target;
    temporary += ".new";  // one name is enough under the lock, and a killed writer leaves at most one behind
    if (const auto error = replaceFile(target, bytes, temporary)) {
        return fail("cannot be written and stays as it was: " + *error);
    }
    return true;
}

bool SuiteFile::synchronize() {
    for (const std::filesystem::path& path : {file_, file_.parent_path()}) {
        const FileDescriptor opened(path, O_RDONLY | O_NONBLOCK);
        const bool missing = !opened.isOpen() && (errno == ENOENT || errno == ENOTDIR);
        if (!missing && (!opened.isOpen() || ::fsync(opened.number()) != 0)) {
            return fail("cannot be put on the disk: " + lastErrorText());
        }
    }
    return true;
}

}  // namespace lunabrook
