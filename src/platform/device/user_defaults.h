// A suite of preferences: the property-list file <suite>.plist, shared with other programs.
//
// Reading: what was loaded is an immutable snapshot; a read hands out a pointer into it that keeps it alive, so nothing
// is copied and a reload in the middle of a request leaves what the request holds intact. Before a read the file's
// identity is looked at, and only a changed file is loaded again. A missing file is an empty suite; a damaged one reads
// as empty, is left as it is, and refuses writes.
//
// Writing: one transaction over named keys under a lock; two programs that set different keys at once both keep theirs.
//
// Handles on one suite of one device share the snapshot. Used from one thread at a time.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/device/device.h"
#include "platform/values/value.h"

namespace lunabrook {

class UserDefaults {
public:
    // Opens nothing yet.
    UserDefaults(const Device& device, std::string_view suite);

    // Null when missing.
    std::shared_ptr<const Value> objectForKey(std::string_view key) const;
    // Null when missing or of another kind.
    std::shared_ptr<const Dictionary> dictionaryForKey(std::string_view key) const;
    std::optional<Date> dateForKey(std::string_view key) const;
    // False when missing.
    bool boolForKey(std::string_view key) const;
    // Everything; never null.
    std::shared_ptr<const Dictionary> contents() const;

    // Nil removes the key. False when nothing was written; the fault is told to the device. A device that drops writes
    // says true and changes nothing.
    using Changes = std::map<std::string, std::optional<Value>, std::less<>>;
    bool setObjects(const Changes& changes);
    // The whole contents of a file that is not there yet, or of one that may go; nothing is written, and no fault told,
    // when another is there.
    enum class Creation { made, failed, wasThere };
    using MayGo = std::function<bool(const Dictionary& there)>;
    Creation create(const Changes& contents, const MayGo& mayGo);
    bool setObject(std::string_view key, Value value);
    bool removeObject(std::string_view key);
    // Takes over every key of a property list, values without a meaning here as well.
    bool merge(std::string_view propertyList);

    // Puts file and directory on the disk: after it a power cut loses nothing. False with a fault told when it cannot.
    bool synchronize();

private:
    std::shared_ptr<SuiteFile> file_;
};

}  // namespace lunabrook
