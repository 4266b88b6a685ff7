#include <algorithm>
#include <vector>

#include "platform/files/private/object_code.h"

namespace lunabrook {

namespace {

// A binary list: "bplist00", objects, a table of their offsets, and a trailer of 32 bytes that says how to read both.
class BinaryReader {
public:
    BinaryReader(std::string_view bytes, ListSink& sink) : bytes_(bytes), sink_(sink) {}

    ObjectKind read() {
        constexpr std::size_t kTrailerBytes = 32;
        if (bytes_.size() < kHeaderBytes + kTrailerBytes) {
            throw ListDamage{kCutShort};
        }
        const std::string_view trailer = bytes_.substr(bytes_.size() - kTrailerBytes);
        bytes_.remove_suffix(kTrailerBytes);
        offsetSize_ = bigEndian(trailer.substr(6, 1));
        referenceSize_ = bigEndian(trailer.substr(7, 1));
        objectCount_ = bigEndian(trailer.substr(8, 8));
        const std::uint64_t root = bigEndian(trailer.substr(16, 8));
        tableStart_ = bigEndian(trailer.substr(24, 8));
        const bool sizesFit = offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
        if (!sizesFit || tableStart_ < kHeaderBytes || tableStart_ > bytes_.size() ||
            objectCount_ > (bytes_.size() - tableStart_) / offsetSize_) {
            throw ListDamage{kCutShort};
        }
        visit(root);
        return objectHeader(objectAt(root)).kind;
    }

private:
    static constexpr std::size_t kHeaderBytes = 8;

    // The bytes from the object's marker up to the offset table.
    std::string_view objectAt(std::uint64_t object) const {
        if (object >= objectCount_) {
            throw ListDamage{kCutShort};
        }
        const std::uint64_t offset = bigEndian(bytes_.substr(tableStart_ + object * offsetSize_, offsetSize_));
        if (offset < kHeaderBytes || offset >= tableStart_) {
            throw ListDamage{kCutShort};
        }
        return bytes_.substr(offset, tableStart_ - offset);
    }

    // Of `count` references or units of a size that must stand there.
    static std::string_view payload(std::string_view object, const ObjectHeader& header, std::uint64_t unitSize) {
        const std::uint64_t space = object.size() - header.size;
        if (header.count > space || header.count * unitSize > space) {
            throw ListDamage{kCutShort};
        }
        return object.substr(header.size, header.count * unitSize);
    }

    // Recursion ends where the sink has enough of it.
    void visit(std::uint64_t number) {
        const std::string_view object = objectAt(number);
        ObjectHeader header = objectHeader(object);
        std::uint64_t unitSize = 1;
        switch (header.kind) {
            case ObjectKind::array:
            case ObjectKind::orderedSet:
            case ObjectKind::set:
            case ObjectKind::dictionary:
                visitContainer(number, object, header);
                return;
            case ObjectKind::integer:
            case ObjectKind::real:
            case ObjectKind::date:
                header.count = std::uint64_t{1} << header.count;
                break;
            case ObjectKind::reference:
                ++header.count;
                break;
            case ObjectKind::utf16:
                unitSize = 2;
                break;
            case ObjectKind::data:
            case ObjectKind::ascii:
            case ObjectKind::utf8:
                break;
            default:
                if (std::string_view("\x00\x08\x09\x0F", 4).find(object.front()) == std::string_view::npos) {
                    throw ListDamage{kNoList};
                }
                header.count = 0;
        }
        sink_.add(object.substr(0, header.size + payload(object, header, unitSize).size()));
    }

    void visitContainer(std::uint64_t number, std::string_view object, const ObjectHeader& header) {
        if (std::find(path_.begin(), path_.end(), number) != path_.end()) {
            throw ListDamage{"holds a container within itself"};
        }
        const bool isDictionary = header.kind == ObjectKind::dictionary;
        const std::string_view references = payload(object, header, (isDictionary ? 2 : 1) * referenceSize_);
        path_.push_back(number);
        sink_.open(header.kind);
        for (std::uint64_t i = 0; i < header.count; ++i) {
            if (isDictionary) {
                visitKey(bigEndian(references.substr(i * referenceSize_, referenceSize_)));
            }
            const std::uint64_t entry = isDictionary ? header.count + i : i;
            visit(bigEndian(references.substr(entry * referenceSize_, referenceSize_)));
        }
        sink_.close();
        path_.pop_back();
    }

    void visitKey(std::uint64_t number) {
        const ObjectKind kind = objectHeader(objectAt(number)).kind;
        if (kind != ObjectKind::ascii && kind != ObjectKind::utf16 && kind != ObjectKind::utf8) {
            throw ListDamage{kNoList};
        }
        visit(number);
    }

    std::string_view bytes_;  // without the trailer
    ListSink& sink_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t tableStart_ = 0;
    std::vector<std::uint64_t> path_;  // the containers that are open
};

}  // namespace

ObjectKind readBinaryPropertyList(std::string_view bytes, ListSink& sink) { return BinaryReader(bytes, sink).read(); }

}  // namespace lunabrook
