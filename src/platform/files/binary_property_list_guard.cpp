#include "platform/files/private/property_list_guard.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/files/property_list.h"

namespace lunabrook {

namespace {

// A binary list: "bplist00", objects, a table of their offsets, and a trailer of 32 bytes that says how to read both.
class BinaryCheck {
public:
    explicit BinaryCheck(std::string_view bytes) : bytes_(bytes) {}

    PropertyListCheck run() {
        PropertyListCheck check;
        if (readTrailer()) {
            visits_.resize(objectCount_);
            visit(root_, 0);
        }
        check.damage = damage_;
        check.cannotBeWrittenBack = unwritable_;
        return check;
    }

private:
    // What is known of an object once it has been visited.
    struct Visit {
        enum State : std::uint8_t { unseen, open, done } state = unseen;
        std::uint8_t height = 0;   // levels of containers from here down
        std::uint32_t values = 0;  // with shared ones written out, saturated just above the limit
    };
    struct Header {
        unsigned kind = 0;
        std::uint64_t count = 0;  // bytes, units or entries, by kind
        std::uint64_t start = 0;  // of the payload
    };

    static constexpr std::size_t kHeaderBytes = 8;
    static constexpr std::size_t kTrailerBytes = 32;

    bool fail(const char* what) {
        damage_ = damage_.value_or(what);
        return false;
    }

    std::uint8_t byteAt(std::uint64_t offset) const { return static_cast<std::uint8_t>(bytes_[offset]); }

    std::uint64_t bigEndian(std::uint64_t offset, std::uint64_t size) const {
        std::uint64_t number = 0;
        for (std::uint64_t i = 0; i < size; ++i) {
            number = number << 8U | byteAt(offset + i);
        }
        return number;
    }

    // Whether `size` bytes stand at `offset` before the offset table.
    bool holds(std::uint64_t offset, std::uint64_t size) const {
        return offset >= kHeaderBytes && offset <= tableStart_ && size <= tableStart_ - offset;
    }

    bool readTrailer() {
        if (bytes_.size() < kHeaderBytes + kTrailerBytes) {
            return fail(kCutShort);
        }
        const std::uint64_t trailer = bytes_.size() - kTrailerBytes;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        objectCount_ = bigEndian(trailer + 8, 8);
        root_ = bigEndian(trailer + 16, 8);
        tableStart_ = bigEndian(trailer + 24, 8);
        const bool sizesFit = offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
        if (!sizesFit || root_ >= objectCount_ || tableStart_ < kHeaderBytes || tableStart_ > trailer ||
            objectCount_ > (trailer - tableStart_) / offsetSize_) {
            return fail(kCutShort);
        }
        return objectCount_ <= kMaximumPropertyListValues || fail(kTooMany);
    }

    bool readHeader(std::uint64_t object, Header& header) {
        const std::uint64_t offset = bigEndian(tableStart_ + object * offsetSize_, offsetSize_);
        if (!holds(offset, 1)) {
            return fail(kCutShort);
        }
        header.kind = byteAt(offset) >> 4U;
        header.count = byteAt(offset) & 0xFU;
        header.start = offset + 1;
        const bool counted = (header.kind >= 0x4 && header.kind <= 0x7) || header.kind >= 0xA;
        if (!counted || header.count != 0xF) {
            return true;
        }
        // A count of fifteen or more follows as an integer object.
        if (!holds(header.start, 1) || byteAt(header.start) >> 4U != 0x1) {
            return fail(kCutShort);
        }
        const std::uint64_t size = std::uint64_t{1} << (byteAt(header.start) & 0xFU);
        if (size > 8 || !holds(header.start + 1, size)) {
            return fail(kCutShort);
        }
        header.count = bigEndian(header.start + 1, size);
        header.start += 1 + size;
        return true;
    }

    bool payloadStands(const Header& header) {
        std::uint64_t unit = 1;
        std::uint64_t count = header.count;
        switch (header.kind) {
            case 0x0:
                count = 0;
                break;
            case 0x1:
            case 0x2:
            case 0x3:
                count = std::uint64_t{1} << header.count;
                break;
            case 0x6:
                unit = 2;
                break;
            case 0x8:
                count = header.count + 1;
                break;
            case 0xA:
            case 0xC:
                unit = referenceSize_;
                break;
            case 0xD:
                unit = 2 * referenceSize_;
                break;
            default:
                break;
        }
        if (count > bytes_.size() || !holds(header.start, count * unit)) {
            return fail(kCutShort);
        }
        return true;
    }

    // The parser ends a text at its first zero and drops what it cannot pair.
    bool textSurvives(const Header& header) const {
        if (header.kind == 0x5) {
            const std::string_view text = bytes_.substr(header.start, header.count);
            return std::all_of(text.begin(), text.end(), [](char unit) { return unit > 0; });
        }
        for (std::uint64_t i = 0; i < header.count; ++i) {
            const std::uint64_t unit = bigEndian(header.start + 2 * i, 2);
            if (unit == 0 || U16_IS_TRAIL(unit)) {
                return false;
            }
            if (U16_IS_LEAD(unit)) {
                ++i;
                if (i == header.count || !U16_IS_TRAIL(bigEndian(header.start + 2 * i, 2))) {
                    return false;
                }
            }
        }
        return true;
    }

    // `depth` counts the containers around the object. Recursion ends at the greatest depth that is allowed.
    bool visit(std::uint64_t object, unsigned depth) {
        if (object >= objectCount_) {
            return fail(kCutShort);
        }
        Visit& known = visits_[object];
        if (known.state == Visit::open) {
            return fail("holds a container within itself");
        }
        if (known.state == Visit::done) {
            return depth + known.height <= kMaximumPropertyListDepth || fail(kTooDeep);
        }
        Header header;
        if (!readHeader(object, header) || !payloadStands(header)) {
            return false;
        }
        known.values = 1;
        if (header.kind == 0x5 || header.kind == 0x6) {
            unwritable_ = unwritable_ || !textSurvives(header);
        } else if (header.kind >= 0xA) {
            known.state = Visit::open;
            if (!visitEntries(header, known, depth + 1)) {
                return false;
            }
        }
        known.state = Visit::done;
        return true;
    }

    bool visitEntries(const Header& header, Visit& container, unsigned depth) {
        if (depth > kMaximumPropertyListDepth) {
            return fail(kTooDeep);
        }
        const std::uint64_t references = header.kind == 0xD ? 2 * header.count : header.count;
        container.height = 1;
        for (std::uint64_t i = 0; i < references; ++i) {
            const std::uint64_t entry = bigEndian(header.start + i * referenceSize_, referenceSize_);
            if (!visit(entry, depth)) {
                return false;
            }
            container.height = std::max<std::uint8_t>(container.height, visits_[entry].height + 1);
            container.values += visits_[entry].values;
            if (container.values > kMaximumPropertyListValues) {
                return fail(kTooMany);
            }
        }
        return true;
    }

    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t tableStart_ = 0;
    std::vector<Visit> visits_;
    std::optional<std::string> damage_;
    bool unwritable_ = false;
};

}  // namespace

bool isBinaryPropertyList(std::string_view bytes) { return bytes.starts_with("bplist00"); }

PropertyListCheck checkBinaryPropertyList(std::string_view bytes) { return BinaryCheck(bytes).run(); }

}  // namespace lunabrook
