#include "platform/device/user_defaults.h"

#include "platform/files/private/suite_file.h"
#include "platform/files/property_list.h"

namespace lunabrook {

UserDefaults::UserDefaults(const Device& device, std::string_view suite) : file_(device.suiteFile(suite)) {}

std::shared_ptr<const Value> UserDefaults::objectForKey(std::string_view key) const {
    const auto snapshot = contents();
    // Shares the snapshot's ownership, so what is handed out outlives a reload.
    return {snapshot, valueForKey(*snapshot, key)};
}

std::shared_ptr<const Dictionary> UserDefaults::dictionaryForKey(std::string_view key) const {
    const auto value = objectForKey(key);
    return {value, value ? value->dictionary() : nullptr};
}

std::optional<Date> UserDefaults::dateForKey(std::string_view key) const {
    return lunabrook::dateForKey(*contents(), key);
}

bool UserDefaults::boolForKey(std::string_view key) const {
    const auto value = objectForKey(key);
    return value && value->boolValue();
}

std::shared_ptr<const Dictionary> UserDefaults::contents() const { return file_->snapshot(); }

namespace {

SuiteFile::Edit editOf(const UserDefaults::Changes& changes) {
    return [&changes](PropertyList& list) {
        for (const auto& [key, value] : changes) {
            if (value) {
                list.set(key, *value);
            } else {
                list.remove(key);
            }
        }
    };
}

}  // namespace

bool UserDefaults::setObjects(const Changes& changes) {
    return file_->change(editOf(changes)) == SuiteFile::Change::written;
}

UserDefaults::Creation UserDefaults::create(const Changes& contents, const MayGo& mayGo) {
    const SuiteFile::Change change = file_->change(editOf(contents), mayGo);
    return change == SuiteFile::Change::written    ? Creation::made
           : change == SuiteFile::Change::wasThere ? Creation::wasThere
                                                   : Creation::failed;
}

bool UserDefaults::setObject(std::string_view key, Value value) {
    return setObjects({{std::string(key), std::move(value)}});
}

bool UserDefaults::removeObject(std::string_view key) { return setObjects({{std::string(key), std::nullopt}}); }

bool UserDefaults::merge(std::string_view propertyList) {
    const auto takeOver = [propertyList](PropertyList& list) { list.merge(propertyList); };
    return file_->change(takeOver) == SuiteFile::Change::written;
}

bool UserDefaults::synchronize() { return file_->synchronize(); }

}  // namespace lunabrook
