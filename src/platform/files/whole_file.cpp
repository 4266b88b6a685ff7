#include "platform/files/private/whole_file.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <atomic>
#include <fstream>
#include <future>
#include <system_error>
#include <thread>

namespace lunabrook {

namespace {

constexpr mode_t kPrivateFolder = 0700;

bool writeAll(const FileDescriptor& file, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(file.number(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

// "process 1234", from the system's table of locks: "1: FLOCK  ADVISORY  WRITE 1234 08:01:5678 0 EOF".
std::string holderOf(const FileDescriptor& file) {
    struct stat status = {};
    ::fstat(file.number(), &status);
    std::ifstream table("/proc/locks");
    for (std::string number, kind, advice, access, process, place, rest;
         table >> number >> kind >> advice >> access >> process >> place && std::getline(table, rest);) {
        if (kind == "FLOCK" && place.ends_with(":" + std::to_string(status.st_ino))) {
            return "process " + process;
        }
    }
    return "another program";
}

// Both give 0, ETIMEDOUT or what went wrong. Who does not stand in the queue looks now and then.
int lockByLooking(const FileDescriptor& file, std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds kPause(2);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return errno;
        }
        if (std::chrono::steady_clock::now() >= end) {
            return ETIMEDOUT;
        }
        std::this_thread::sleep_for(kPause);
    }
    return 0;
}

// The system's queue is fair, while who only looks may find busy writers there every time. But nobody can leave the
// queue: a thread of its own stands in it, and one that was given up drops the lock when it has it. A program that is
// asked again and again while the holder is stopped has few of them.
int lockInTurn(const FileDescriptor& file, std::chrono::milliseconds patience) {
    constexpr int kMostInQueue = 8;
    static std::atomic<int> inQueue = 0;
    const int queued = inQueue < kMostInQueue ? ::fcntl(file.number(), F_DUPFD_CLOEXEC, 0) : -1;
    std::packaged_task<int()> turn([queued] {
        int error = 0;
        do {
            error = ::flock(queued, LOCK_EX) == 0 ? 0 : errno;
        } while (error == EINTR);
        ::close(queued);
        --inQueue;
        return error;
    });
    auto outcome = turn.get_future();
    try {
        if (queued >= 0) {
            ++inQueue;
            std::thread(std::move(turn)).detach();
            return outcome.wait_for(patience) == std::future_status::ready ? outcome.get() : ETIMEDOUT;
        }
    } catch (const std::system_error&) {  // no thread is left
        --inQueue;
        ::close(queued);
    }
    return lockByLooking(file, patience);
}

}  // namespace

bool readAll(const FileDescriptor& file, std::size_t limit, std::string& bytes) {
    std::array<char, 1 << 16> chunk;
    bytes.clear();
    while (bytes.size() <= limit) {
        const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return count == 0;
        }
        bytes.append(chunk.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

std::filesystem::path withoutLinks(std::filesystem::path file) {
    constexpr int kMostLinks = 40;  // as the system's own
    std::error_code error;
    for (int link = 0; link < kMostLinks; ++link) {
        const std::filesystem::path target = std::filesystem::read_symlink(file, error);
        if (error) {
            break;
        }
        file = file.parent_path() / target;
    }
    const std::filesystem::path folder = std::filesystem::canonical(file.parent_path(), error);
    return error ? file : folder / file.filename();
}

std::optional<std::string> replaceFile(const std::filesystem::path& target, const std::string& bytes,
                                       const std::string& ending) {
    const std::string temporary = target.string() + ending;
    ::unlink(temporary.c_str());
    struct stat old = {};
    const bool isNew = ::stat(target.c_str(), &old) != 0;  // before the opening, whose error is told
    FileDescriptor file(temporary, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, kPrivateFile);
    const bool isMade = file.isOpen();
    takeOwnerFrom(isNew ? target.parent_path() : target, file);
    constexpr mode_t kPermissions = 0777;
    const mode_t mode = isNew ? kPrivateFile : old.st_mode & kPermissions;
    // The bytes reach the disk before the name does, so a power cut never finds half of them.
    const bool isWritten = isMade && ::fchmod(file.number(), mode) == 0 && writeAll(file, bytes) &&
                           ::fdatasync(file.number()) == 0 && file.close();
    if (isWritten && ::rename(temporary.c_str(), target.c_str()) == 0) {
        return std::nullopt;
    }
    const std::string error = lastErrorText();
    if (isMade) {
        ::unlink(temporary.c_str());
    }
    return error;
}

std::optional<std::string> lock(const FileDescriptor& file, std::chrono::milliseconds patience) {
    int error = file.isOpen() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 ? 0 : errno;
    if (file.isOpen() && (error == EWOULDBLOCK || error == EINTR)) {
        error = lockInTurn(file, patience);
    }
    if (error == ETIMEDOUT) {
        return holderOf(file) + " has held the lock for more than " +
               std::to_string(std::chrono::duration_cast<std::chrono::seconds>(patience).count()) + " seconds";
    }
    return error == 0 ? std::nullopt : std::optional(std::generic_category().message(error));
}

void takeOwnerFrom(const std::filesystem::path& other, const FileDescriptor& file) {
    struct stat status = {};
    struct stat own = {};
    // What has another name besides may be another's.
    const bool isOurs =
        file.isOpen() && ::fstat(file.number(), &own) == 0 && (own.st_nlink == 1 || S_ISDIR(own.st_mode));
    if (isOurs && ::stat(other.c_str(), &status) == 0) {
        // Only root may give a file away, and a file system that knows no owners is no reason to write nothing.
        [[maybe_unused]] const int ignored = ::fchown(file.number(), status.st_uid, status.st_gid);
    }
}

std::optional<std::string> makeFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    if (folder.empty() || std::filesystem::is_directory(folder, ignored)) {
        return std::nullopt;
    }
    if (auto error = makeFolder(folder.parent_path())) {
        return error;
    }
    if (::mkdir(folder.c_str(), kPrivateFolder) == 0 && ::chmod(folder.c_str(), kPrivateFolder) == 0) {
        takeOwnerFrom(std::filesystem::absolute(folder, ignored).parent_path(),
                      FileDescriptor(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW));
        return std::nullopt;
    }
    const std::string error = lastErrorText();
    return std::filesystem::is_directory(folder, ignored) ? std::nullopt : std::optional(error);
}

}  // namespace lunabrook
