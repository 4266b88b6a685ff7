#include "platform/files/property_list.h"

#include <utility>

#include "platform/files/private/flat_list.h"

namespace lunabrook {

namespace {

struct ValueAdder {
    FlatList& list;

    void operator()(std::int64_t number) const { list.add(codeOf(WideInteger{number})); }
    void operator()(const std::string& text) const { list.add(codeOf(std::string_view(text))); }
    void operator()(Date date) const {
        require(isOfFourDigitYear(date), "holds a date outside the years 1 to 9999");
        list.add(codeOf(date));
    }
    void operator()(const Array& array) const {
        list.open(ObjectKind::array);
        for (const Value& entry : array) {
            std::visit(*this, entry.storage());
        }
        list.close();
    }
    void operator()(const Dictionary& dictionary) const {
        list.open(ObjectKind::dictionary);
        for (const auto& [key, entry] : dictionary) {
            (*this)(key);
            std::visit(*this, entry.storage());
        }
        list.close();
    }
    void operator()(const auto& other) const { list.add(codeOf(other)); }
};

// Of a flat dictionary what is in it.
std::string_view entriesOf(const FlatList& list) {
    return std::string_view(list.codes()).substr(1, list.codes().size() - 2);
}

}  // namespace

std::variant<Dictionary, std::string> dictionaryFromPropertyList(std::string_view bytes) {
    PropertyList list;
    if (auto damage = list.merge(bytes)) {
        return *std::move(damage);
    }
    return list.dictionary();
}

void PropertyList::change(std::string_view key, const Value* value) {
    try {
        FlatList list;
        list.open(ObjectKind::dictionary);
        list.add(codeOf(key));
        value != nullptr ? std::visit(ValueAdder{list}, value->storage()) : list.add(codeOfHeader(ObjectKind::nothing));
        list.close();
        entries_ += entriesOf(list);
    } catch (const ListDamage& damage) {
        fault_ = fault_.value_or("the value for " + std::string(key) + " " + damage.what);
    }
}

std::optional<std::string> PropertyList::merge(std::string_view bytes) {
    try {
        FlatList list;
        require(bytes.size() <= kMaximumPropertyListBytes, "is larger than 64 MiB");
        bytes.starts_with("bplist00") ? readBinaryPropertyList(bytes, list) : readXmlPropertyList(bytes, list);
        const bool isDictionary = objectAt(list.codes()).kind == ObjectKind::dictionary;
        require(isDictionary, "is a property list whose root is not a dictionary");
        entries_ += entriesOf(list);
        return std::nullopt;
    } catch (const ListDamage& damage) {
        fault_ = fault_.value_or(damage.what);
        return damage.what;
    }
}

void PropertyList::merge(const PropertyList& other) {
    entries_ += other.entries_;
    fault_ = fault_ ? fault_ : other.fault_;
}

Dictionary PropertyList::dictionary() const {
    std::string_view rest = entries_;
    return takeDictionary(rest);
}

std::variant<std::string, PropertyList::Unwritable> PropertyList::binary() const {
    if (fault_) {
        return Unwritable{*fault_};
    }
    try {
        std::string bytes = binaryPropertyList(entries_);
        if (bytes.size() > kMaximumPropertyListBytes) {
            return Unwritable{"would be larger than 64 MiB"};
        }
        return bytes;
    } catch (const ListDamage& damage) {
        return Unwritable{"would not be readable: it " + std::string(damage.what)};
    }
}

}  // namespace lunabrook
