#include "platform/files/property_list.h"

#include <plist/plist.h>

#include <bit>
#include <cstdlib>
#include <limits>

#include "platform/files/private/property_list_guard.h"

namespace lunabrook {

struct PropertyList::Tree {
    struct Free {
        void operator()(void* node) const { plist_free(node); }
    };
    std::unique_ptr<void, Free> root{plist_new_dict()};
    bool cannotBeWrittenBack = false;
};

namespace {

// Property lists count seconds from 2001-01-01 00:00:00 UTC.
constexpr double kEpochOf2001 = 978307200.0;

struct FreeBytes {
    void operator()(char* bytes) const { plist_to_bin_free(bytes); }
};

std::string binaryOf(plist_t node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    const std::unique_ptr<char, FreeBytes> owner(bytes);
    return bytes != nullptr ? std::string(bytes, length) : std::string();
}

// The node's own bytes in a binary list, marker first. The library's readers lose a date's range and sign and an
// integer's signedness; its binary form has them exactly.
std::string encodedNode(plist_t node) {
    constexpr std::size_t kHeaderAndArrayBytes = 10;  // "bplist00", a marker, one reference
    const plist_t array = plist_new_array();
    plist_array_append_item(array, plist_copy(node));
    const std::string bytes = binaryOf(array);
    plist_free(array);
    return bytes.size() > kHeaderAndArrayBytes ? bytes.substr(kHeaderAndArrayBytes) : std::string();
}

Value integerValueOf(plist_t node) {
    constexpr char kWideInteger = 0x14;  // sixteen bytes: beyond the signed range
    std::uint64_t number = 0;
    plist_get_uint_val(node, &number);
    if (number > std::uint64_t{std::numeric_limits<std::int64_t>::max()} &&
        encodedNode(node).starts_with(kWideInteger)) {
        return static_cast<double>(number);
    }
    return std::bit_cast<std::int64_t>(number);
}

Value dateValueOf(plist_t node) {
    const std::string encoded = encodedNode(node);
    constexpr std::size_t kDateBytes = 9;
    std::uint64_t bits = 0;
    for (std::size_t i = 1; i < kDateBytes && i < encoded.size(); ++i) {
        bits = bits << 8U | static_cast<std::uint8_t>(encoded[i]);
    }
    return dateFromSecondsSince1970(std::bit_cast<double>(bits) + kEpochOf2001);
}

// A one-date binary list made by hand, since the library's own maker takes 32-bit seconds.
plist_t dateNode(Date date) {
    const auto bits = std::bit_cast<std::uint64_t>(secondsSince1970(date) - kEpochOf2001);
    std::string bytes = "bplist00\xA1\x01\x33";
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(bits >> static_cast<unsigned>(shift) & 0xFFU);
    }
    constexpr char kTableAndTrailer[] =
        "\x08\x0A"              // offsets of the array and of the date
        "\0\0\0\0\0\0\x01\x01"  // sizes of an offset and of a reference
        "\0\0\0\0\0\0\0\x02"    // two objects
        "\0\0\0\0\0\0\0\0"      // the array is the root
        "\0\0\0\0\0\0\0\x13";   // the table's own offset
    bytes.append(kTableAndTrailer, sizeof kTableAndTrailer - 1);
    plist_t list = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &list);
    const plist_t copied = plist_copy(plist_array_get_item(list, 0));
    plist_free(list);
    return copied;
}

std::optional<Value> valueOf(plist_t node);

Dictionary dictionaryOf(plist_t node) {
    Dictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> owner(iterator, &std::free);
    for (;;) {
        char* key = nullptr;
        plist_t entry = nullptr;
        plist_dict_next_item(node, iterator, &key, &entry);
        const std::unique_ptr<char, decltype(&std::free)> keyOwner(key, &std::free);
        if (entry == nullptr) {
            return dictionary;
        }
        if (auto value = valueOf(entry)) {
            dictionary.insert_or_assign(key, *std::move(value));
        }
    }
}

Array arrayOf(plist_t node) {
    Array array;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> owner(iterator, &std::free);
    for (;;) {
        plist_t entry = nullptr;
        plist_array_next_item(node, iterator, &entry);
        if (entry == nullptr) {
            return array;
        }
        if (auto value = valueOf(entry)) {
            array.push_back(*std::move(value));
        }
    }
}

std::optional<Value> valueOf(plist_t node) {
    std::uint64_t length = 0;
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t truth = 0;
            plist_get_bool_val(node, &truth);
            return Value(truth != 0);
        }
        case PLIST_UINT:
            return integerValueOf(node);
        case PLIST_REAL: {
            double real = 0;
            plist_get_real_val(node, &real);
            return Value(real);
        }
        case PLIST_STRING: {
            const char* text = plist_get_string_ptr(node, &length);
            return Value(text != nullptr ? std::string(text, length) : std::string());
        }
        case PLIST_DATE:
            return dateValueOf(node);
        case PLIST_DATA: {
            const char* bytes = plist_get_data_ptr(node, &length);
            return Value(bytes != nullptr ? Data(bytes, bytes + length) : Data());
        }
        case PLIST_ARRAY:
            return Value(arrayOf(node));
        case PLIST_DICT:
            return Value(dictionaryOf(node));
        default:
            return std::nullopt;
    }
}

struct NodeMaker {
    plist_t operator()(bool truth) const { return plist_new_bool(truth ? 1 : 0); }
    plist_t operator()(std::int64_t number) const { return plist_new_uint(std::bit_cast<std::uint64_t>(number)); }
    plist_t operator()(double real) const { return plist_new_real(real); }
    plist_t operator()(const std::string& text) const { return plist_new_string(text.c_str()); }
    plist_t operator()(Date date) const { return dateNode(date); }
    plist_t operator()(const Data& data) const {
        return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
    }
    plist_t operator()(const Array& array) const {
        const plist_t node = plist_new_array();
        for (const Value& entry : array) {
            plist_array_append_item(node, std::visit(*this, entry.storage()));
        }
        return node;
    }
    plist_t operator()(const Dictionary& dictionary) const {
        const plist_t node = plist_new_dict();
        for (const auto& [key, entry] : dictionary) {
            plist_dict_set_item(node, key.c_str(), std::visit(*this, entry.storage()));
        }
        return node;
    }
};

}  // namespace

PropertyList::PropertyList() : tree_(std::make_unique<Tree>()) {}
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;
PropertyList::~PropertyList() = default;

std::variant<PropertyList, std::string> PropertyList::fromBytes(std::string_view bytes) {
    if (bytes.size() > kMaximumPropertyListBytes) {
        return "is larger than 64 MiB";
    }
    const bool binary = isBinaryPropertyList(bytes);
    const PropertyListCheck check = binary ? checkBinaryPropertyList(bytes) : checkXmlPropertyList(bytes);
    if (check.damage) {
        return *check.damage;
    }
    plist_t root = nullptr;
    (binary ? plist_from_bin : plist_from_xml)(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    if (root == nullptr) {
        return "is not a property list, or a damaged one";
    }
    PropertyList list;
    list.tree_->root.reset(root);
    list.tree_->cannotBeWrittenBack = check.cannotBeWrittenBack;
    if (plist_get_node_type(root) != PLIST_DICT) {
        return "is a property list whose root is not a dictionary";
    }
    return list;
}

Dictionary PropertyList::dictionary() const { return dictionaryOf(tree_->root.get()); }

void PropertyList::set(std::string_view key, const Value& value) {
    plist_dict_set_item(tree_->root.get(), std::string(key).c_str(), std::visit(NodeMaker{}, value.storage()));
}

void PropertyList::remove(std::string_view key) { plist_dict_remove_item(tree_->root.get(), std::string(key).c_str()); }

void PropertyList::merge(const PropertyList& other) {
    plist_t target = tree_->root.get();
    plist_dict_merge(&target, other.tree_->root.get());
    tree_->cannotBeWrittenBack = tree_->cannotBeWrittenBack || other.tree_->cannotBeWrittenBack;
}

std::variant<std::string, PropertyList::Unwritable> PropertyList::binary() const {
    if (tree_->cannotBeWrittenBack) {
        return Unwritable{"holds a text with a zero or unpaired character, which would be lost"};
    }
    std::string bytes = binaryOf(tree_->root.get());
    if (bytes.empty() || bytes.size() > kMaximumPropertyListBytes) {
        return Unwritable{"would be larger than 64 MiB"};
    }
    return bytes;
}

}  // namespace lunabrook
