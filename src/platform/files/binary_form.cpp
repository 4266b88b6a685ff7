// A binary list: "bplist00", objects, a table of their offsets, and a trailer of 32 bytes that says how to read both. A
// container refers to its entries by their numbers, a dictionary to all keys and then all values.

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/files/private/flat_list.h"

namespace lunabrook {

namespace {

constexpr std::string_view kHeader = "bplist00";

class BinaryReader {
public:
    BinaryReader(std::string_view bytes, FlatList& list) : bytes_(bytes), list_(list) {}

    void read() {
        constexpr std::size_t kTrailerBytes = 32;
        require(bytes_.size() >= kHeader.size() + kTrailerBytes, kCutShort);
        const std::string_view trailer = bytes_.substr(bytes_.size() - kTrailerBytes);
        bytes_.remove_suffix(kTrailerBytes);
        offsetSize_ = bigEndian(trailer.substr(6, 1));
        referenceSize_ = bigEndian(trailer.substr(7, 1));
        objectCount_ = bigEndian(trailer.substr(8, 8));
        tableStart_ = bigEndian(trailer.substr(24, 8));
        require(offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8, kCutShort);
        require(tableStart_ >= kHeader.size() && tableStart_ <= bytes_.size(), kCutShort);
        require(objectCount_ <= (bytes_.size() - tableStart_) / offsetSize_, kCutShort);
        add(bigEndian(trailer.substr(16, 8)), false);
    }

private:
    // Recursion ends where the list has enough of it.
    void add(std::uint64_t number, bool isKey) {
        require(number < objectCount_, kCutShort);
        const std::uint64_t offset = numberAt(tableStart_ + number * offsetSize_, offsetSize_);
        require(offset >= kHeader.size() && offset < tableStart_, kCutShort);
        const Object object = objectAt(bytes_.substr(offset, tableStart_ - offset));
        const bool isText = object.kind >= ObjectKind::ascii && object.kind <= ObjectKind::utf8;
        require(isKey ? isText : object.kind <= ObjectKind::dictionary, kNoList);
        if (!object.isContainer()) {
            list_.add(object.code);
            return;
        }
        require(std::find(path_.begin(), path_.end(), number) == path_.end(), "holds a container within itself");
        const bool isDictionary = object.kind == ObjectKind::dictionary;
        const std::uint64_t start = offset + object.code.size();
        require(object.count <= (tableStart_ - start) / referenceSize_ / (isDictionary ? 2 : 1), kCutShort);
        path_.push_back(number);
        list_.open(object.kind);
        for (std::uint64_t i = 0; i < object.count; ++i) {
            if (isDictionary) {
                add(numberAt(start + i * referenceSize_, referenceSize_), true);
            }
            const std::uint64_t entry = isDictionary ? object.count + i : i;
            add(numberAt(start + entry * referenceSize_, referenceSize_), false);
        }
        list_.close();
        path_.pop_back();
    }

    std::uint64_t numberAt(std::uint64_t start, std::uint64_t size) const {
        return bigEndian(bytes_.substr(start, size));
    }

    std::string_view bytes_;  // without the trailer
    FlatList& list_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t tableStart_ = 0;
    std::vector<std::uint64_t> path_;  // the containers that are open
};

class BinaryWriter {
public:
    explicit BinaryWriter(std::size_t referenceSize) : referenceSize_(referenceSize) {}

    // Writes an object that was taken and what is in it; its number.
    std::uint32_t add(const Object& object, std::string_view& rest) {
        if (object.isContainer()) {
            return addContainer(object.kind, rest);
        }
        size_.add(object.code.size());
        const auto known = numbers_.find(object.code);
        if (known != numbers_.end()) {
            return known->second;
        }
        // A hostile list can make all hashes meet; its equal scalars are written more than once then.
        constexpr std::size_t kMostInABucket = 64;
        if (numbers_.bucket_size(numbers_.bucket(object.code)) < kMostInABucket) {
            numbers_.emplace(object.code, offsets_.size());
        }
        return append(object.code);
    }

    std::uint32_t addContainer(ObjectKind kind, std::string_view& rest) {
        size_.add(1);
        std::set<std::string> seen;  // as texts: one key may be coded in two ways
        std::vector<std::uint32_t> keys;
        std::vector<std::uint32_t> entries;
        for (Object entry; takeEntry(rest, entry);) {
            if (kind == ObjectKind::dictionary) {
                const Object key = std::exchange(entry, takeObject(rest));
                const std::size_t before = seen.size();
                seen.emplace_hint(seen.end(), textOf(key));  // keys are mostly in order
                if (seen.size() == before || entry.kind == ObjectKind::nothing) {
                    valueOf(entry, rest);  // only takes what is in it
                    continue;
                }
                keys.push_back(add(key, rest));
            }
            entries.push_back(add(entry, rest));
        }
        std::string code = codeOfHeader(kind, entries.size());
        keys.insert(keys.end(), entries.begin(), entries.end());
        for (const std::uint32_t number : keys) {
            appendBigEndian(code, number, referenceSize_);
        }
        return append(code);
    }

    std::size_t count() const { return offsets_.size(); }

    // Behind the root, the last object.
    std::string finished() && {
        const std::size_t tableStart = bytes_.size();
        for (const std::uint64_t offset : offsets_) {
            appendBigEndian(bytes_, offset, sizeFor(tableStart));
        }
        bytes_.append(6, '\0');
        appendBigEndian(bytes_, sizeFor(tableStart), 1);
        appendBigEndian(bytes_, referenceSize_, 1);
        appendBigEndian(bytes_, count(), 8);
        appendBigEndian(bytes_, count() - 1, 8);
        appendBigEndian(bytes_, tableStart, 8);
        return std::move(bytes_);
    }

private:
    std::uint32_t append(std::string_view code) {
        offsets_.push_back(bytes_.size());
        bytes_ += code;
        return static_cast<std::uint32_t>(offsets_.size() - 1);
    }

    std::size_t referenceSize_;
    std::string bytes_ = std::string(kHeader);
    std::vector<std::uint64_t> offsets_;
    std::unordered_map<std::string_view, std::uint32_t> numbers_;  // of scalars, by code
    ListSize size_;
};

}  // namespace

void readBinaryPropertyList(std::string_view bytes, FlatList& list) { BinaryReader(bytes, list).read(); }

std::string binaryPropertyList(std::string_view entries) {
    std::size_t referenceSize = sizeof(std::uint32_t);
    while (true) {  // again when the references to so few objects can be shorter
        BinaryWriter writer(referenceSize);
        std::string_view rest = entries;
        writer.addContainer(ObjectKind::dictionary, rest);
        if (referenceSize <= sizeFor(writer.count())) {
            return std::move(writer).finished();
        }
        referenceSize = sizeFor(writer.count());
    }
}

}  // namespace lunabrook
