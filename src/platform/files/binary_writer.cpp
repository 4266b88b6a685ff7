#include "platform/files/private/binary_writer.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "platform/files/private/object_code.h"

namespace lunabrook {

namespace {

bool isContainer(std::string_view code) { return objectHeader(code).kind >= ObjectKind::array; }

template <class Body>
void forEachEntry(std::string_view code, Body body) {
    std::uint32_t number = 0;
    for (std::size_t i = 1; isContainer(code) && i < code.size(); i += sizeof number) {
        std::memcpy(&number, &code[i], sizeof number);
        body(number);
    }
}

// 1, 2, 4 or 8 bytes.
std::size_t sizeFor(std::uint64_t number) {
    std::size_t size = 1;
    while (size < 8 && number >> 8 * size != 0) {
        size *= 2;
    }
    return size;
}

}  // namespace

std::string_view BinaryWriter::codeOfObject(Number number) const {
    const std::size_t end = number + 1 < starts_.size() ? starts_[number + 1] : codes_.size();
    return std::string_view(codes_).substr(starts_[number], end - starts_[number]);
}

// Where the object of this code stands or shall stand; null when a hostile list makes too many hashes meet, and then
// equal objects are written more than once.
BinaryWriter::Number* BinaryWriter::slotFor(std::string_view code) {
    constexpr std::size_t kMostSteps = 64;
    std::size_t slot = std::hash<std::string_view>{}(code);
    for (std::size_t step = 0; step < kMostSteps; ++step, ++slot) {
        Number& number = slots_[slot % slots_.size()];
        if (number == kNothing || codeOfObject(number) == code) {
            return &number;
        }
    }
    return nullptr;
}

BinaryWriter::Number BinaryWriter::numberOf(std::string_view code) {
    const auto next = static_cast<Number>(starts_.size());
    if (2 * starts_.size() >= slots_.size()) {
        slots_.assign(std::max<std::size_t>(256, 2 * slots_.size()), kNothing);
        for (Number number = 0; number < next; ++number) {
            if (Number* slot = slotFor(codeOfObject(number))) {
                *slot = number;
            }
        }
    }
    Number* slot = slotFor(code);
    if (slot != nullptr && *slot != kNothing) {
        return *slot;
    }
    if (slot != nullptr) {
        *slot = next;
    }
    starts_.push_back(static_cast<Number>(codes_.size()));
    codes_ += code;
    return next;
}

void BinaryWriter::end() {
    const Open closed = open_.back();
    open_.pop_back();
    if (!open_.empty()) {
        const Number number = numberOfContainer(closed.kind, closed.start);
        numbers_.resize(closed.start);
        numbers_.push_back(number);
    }
}

BinaryWriter::Number BinaryWriter::numberOfContainer(ObjectKind kind, std::size_t start) {
    std::string code = codeOfHeader(kind, 0);
    const auto append = [&code](Number number) { code.append(reinterpret_cast<const char*>(&number), sizeof number); };
    if (kind != ObjectKind::dictionary) {
        std::for_each(numbers_.begin() + static_cast<std::ptrdiff_t>(start), numbers_.end(), append);
        return numberOf(code);
    }
    seenIn_.resize(starts_.size(), kNothing);
    for (std::size_t i = start; i < numbers_.size(); i += 2) {
        const Number key = numbers_[i];
        if (seenIn_[key] != dictionaries_ && numbers_[i + 1] != kNothing) {
            append(key);
            append(numbers_[i + 1]);
        }
        seenIn_[key] = dictionaries_;
    }
    ++dictionaries_;
    return numberOf(code);
}

// By object, its number in what is written; nothing for what the root does not reach.
std::vector<BinaryWriter::Number> BinaryWriter::writtenNumbers(Number root) const {
    std::vector<Number> written(starts_.size(), kNothing);
    written[root] = 0;
    for (Number number = root + 1; number-- > 0;) {
        if (written[number] != kNothing) {
            forEachEntry(codeOfObject(number), [&written](Number entry) { written[entry] = 0; });
        }
    }
    Number next = 0;
    std::vector<ListSize> sizes(root + 1);
    for (Number number = 0; number <= root; ++number) {
        if (written[number] != kNothing) {
            written[number] = next++;
            const std::string_view code = codeOfObject(number);
            sizes[number] = {1, isContainer(code) ? 0 : code.size()};
            forEachEntry(code, [&sizes, number](Number entry) { sizes[number].add(sizes[entry]); });
        }
    }
    return written;
}

void BinaryWriter::appendContainer(std::string& bytes, std::string_view code, const std::vector<Number>& written,
                                   std::size_t referenceSize) const {
    const ObjectKind kind = objectHeader(code).kind;
    const std::size_t turns = kind == ObjectKind::dictionary ? 2 : 1;  // all keys, then all values
    bytes += codeOfHeader(kind, (code.size() - 1) / sizeof(Number) / turns);
    for (std::size_t turn = 0; turn < turns; ++turn) {
        std::size_t index = 0;
        forEachEntry(code, [&](Number entry) {
            if (index++ % turns == turn) {
                appendBigEndian(bytes, written[entry], referenceSize);
            }
        });
    }
}

std::string BinaryWriter::bytes() {
    const Number root = numberOfContainer(ObjectKind::dictionary, 0);
    const std::vector<Number> written = writtenNumbers(root);
    const std::uint64_t count = std::uint64_t{written[root]} + 1;
    std::string bytes = "bplist00";
    std::vector<std::uint64_t> offsets;
    for (Number number = 0; number <= root; ++number) {
        if (written[number] != kNothing) {
            offsets.push_back(bytes.size());
            const std::string_view code = codeOfObject(number);
            isContainer(code) ? appendContainer(bytes, code, written, sizeFor(count)) : void(bytes += code);
        }
    }
    const std::size_t tableStart = bytes.size();
    for (const std::uint64_t offset : offsets) {
        appendBigEndian(bytes, offset, sizeFor(tableStart));
    }
    bytes.append(6, '\0');
    appendBigEndian(bytes, sizeFor(tableStart), 1);
    appendBigEndian(bytes, sizeFor(count), 1);
    appendBigEndian(bytes, count, 8);
    appendBigEndian(bytes, written[root], 8);
    appendBigEndian(bytes, tableStart, 8);
    return bytes;
}

}  // namespace lunabrook
