#include "platform/files/property_list.h"

#include <set>
#include <utility>
#include <vector>

#include "platform/files/private/binary_writer.h"
#include "platform/files/private/object_code.h"

namespace lunabrook {

namespace {

class ValueBuilder : public ListSink {
public:
    Dictionary root;

private:
    struct Open {
        ObjectKind kind;
        Dictionary dictionary;
        Array array;
        std::optional<std::string> key;           // whose value comes next
        std::set<std::string, std::less<>> left;  // keys whose first value has no meaning
    };

    void take(std::string_view code) override {
        if (!open_.empty() && open_.back().kind == ObjectKind::dictionary && !open_.back().key) {
            open_.back().key = textOfCode(code);
        } else if (auto value = valueOfCode(code)) {
            put(*std::move(value));
        } else if (!open_.empty() && open_.back().key) {
            open_.back().left.insert(*std::exchange(open_.back().key, {}));
        }
    }
    void begin(ObjectKind kind) override { open_.push_back({kind, {}, {}, {}, {}}); }
    void end() override {
        Open closed = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            root = std::move(closed.dictionary);
        } else if (closed.kind == ObjectKind::dictionary) {
            put(std::move(closed.dictionary));
        } else {
            put(std::move(closed.array));
        }
    }

    void put(Value value) {
        if (open_.empty()) {
            return;
        }
        if (open_.back().kind == ObjectKind::dictionary) {
            Dictionary& dictionary = open_.back().dictionary;
            std::string key = *std::exchange(open_.back().key, {});
            if (!open_.back().left.contains(key)) {  // keys are mostly in order, and then the hint saves a search
                dictionary.emplace_hint(dictionary.end(), std::move(key), std::move(value));
            }
        } else {
            open_.back().array.push_back(std::move(value));
        }
    }

    std::vector<Open> open_;
};

struct ValueSender {
    ListSink& sink;

    void operator()(bool truth) const { sink.add(codeOf(truth)); }
    void operator()(std::int64_t number) const { sink.add(codeOf(WideInteger{number})); }
    void operator()(double real) const { sink.add(codeOf(real)); }
    void operator()(const std::string& text) const { sink.add(codeOf(text)); }
    void operator()(Date date) const {
        if (!isOfFourDigitYear(date)) {
            throw ListDamage{"holds a date outside the years 1 to 9999"};
        }
        sink.add(codeOf(date));
    }
    void operator()(const Data& data) const { sink.add(codeOf(data)); }
    void operator()(const Array& array) const {
        sink.open(ObjectKind::array);
        for (const Value& entry : array) {
            std::visit(*this, entry.storage());
        }
        sink.close();
    }
    void operator()(const Dictionary& dictionary) const {
        sink.open(ObjectKind::dictionary);
        for (const auto& [key, entry] : dictionary) {
            sink.add(codeOf(key));
            std::visit(*this, entry.storage());
        }
        sink.close();
    }
};

// What is wrong, or nil.
std::optional<std::string> send(std::string_view bytes, ListSink& sink) {
    if (bytes.size() > kMaximumPropertyListBytes) {
        return "is larger than 64 MiB";
    }
    try {
        const bool isBinary = bytes.starts_with("bplist00");
        const ObjectKind root = isBinary ? readBinaryPropertyList(bytes, sink) : readXmlPropertyList(bytes, sink);
        const bool isDictionary = root == ObjectKind::dictionary;
        return isDictionary ? std::nullopt : std::optional("is a property list whose root is not a dictionary");
    } catch (const ListDamage& damage) {
        return damage.what;
    }
}

}  // namespace

std::variant<Dictionary, std::string> dictionaryFromPropertyList(std::string_view bytes) {
    ValueBuilder builder;
    if (auto damage = send(bytes, builder)) {
        return *std::move(damage);
    }
    return std::move(builder.root);
}

struct PropertyList::Making {
    BinaryWriter writer;
    std::optional<std::string> fault;  // the first one

    template <class Body>
    void change(std::string_view key, Body sendValue) {
        try {
            writer.startList();
            writer.open(ObjectKind::dictionary);
            writer.add(codeOf(key));
            sendValue();
            writer.close();
        } catch (const ListDamage& damage) {
            fault = fault.value_or("the value for " + std::string(key) + " " + damage.what);
        }
    }
};

PropertyList::PropertyList() : making_(std::make_unique<Making>()) {}
PropertyList::~PropertyList() = default;

void PropertyList::set(std::string_view key, const Value& value) {
    making_->change(key, [this, &value] { std::visit(ValueSender{making_->writer}, value.storage()); });
}

void PropertyList::remove(std::string_view key) {
    making_->change(key, [this] { making_->writer.leaveOut(); });
}

std::optional<std::string> PropertyList::merge(std::string_view bytes) {
    making_->writer.startList();
    auto damage = send(bytes, making_->writer);
    if (damage && !making_->fault) {
        making_->fault = damage;
    }
    return damage;
}

std::variant<std::string, PropertyList::Unwritable> PropertyList::binary() const {
    if (making_->fault) {
        return Unwritable{*making_->fault};
    }
    try {
        std::string bytes = making_->writer.bytes();
        if (bytes.size() > kMaximumPropertyListBytes) {
            return Unwritable{"would be larger than 64 MiB"};
        }
        return bytes;
    } catch (const ListDamage& damage) {
        return Unwritable{"would not be readable: it " + std::string(damage.what)};
    }
}

}  // namespace lunabrook
