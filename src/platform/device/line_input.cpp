#include "platform/device/line_input.h"

#include <dlfcn.h>
#include <histedit.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "platform/device/terminal.h"

namespace lunabrook {

namespace {

constexpr const char* kEditingLibrary = "libedit.so.2";
char kPrompt[] = "> ";  // the library wants a text that it might change
constexpr int kKeptLines = 100;

char* promptOf(EditLine*) { return kPrompt; }

}  // namespace

class LineInput::Editor {
public:
    Editor() {
        if (!library_.isWhole()) {
            return;
        }
        // Of the keys that are typed; the answers do not look at it. A locale of single bytes would swallow letters.
        if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) {
            std::setlocale(LC_CTYPE, "C.UTF-8");
        }
        editor_ = library_.init("lunabrook", stdin, stderr, stderr);
        history_ = library_.initHistory();
        if (editor_ == nullptr || history_ == nullptr) {
            return;
        }
        HistEvent event{};
        library_.change(history_, &event, H_SETSIZE, kKeptLines);
        library_.change(history_, &event, H_SETUNIQUE, 1);
        library_.set(editor_, EL_PROMPT, &promptOf);
        library_.set(editor_, EL_EDITOR, "emacs");
        library_.set(editor_, EL_SIGNAL, 1);
        library_.set(editor_, EL_HIST, library_.change, history_);
    }
    ~Editor() {
        if (history_ != nullptr) {
            library_.endHistory(history_);
        }
        if (editor_ != nullptr) {
            library_.end(editor_);
        }
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    bool works() const { return editor_ != nullptr && history_ != nullptr; }

    std::optional<std::string> next() {
        int count = 0;
        const char* typed = library_.gets(editor_, &count);
        if (typed == nullptr || count <= 0) {
            std::cerr << "\n";
            return std::nullopt;
        }
        std::string line(typed, std::min(static_cast<std::size_t>(count), kMostBytes));
        if (line.ends_with('\n')) {
            line.pop_back();
        }
        if (line.find_first_not_of(" \t") != std::string::npos) {
            HistEvent event{};
            library_.change(history_, &event, H_ENTER, line.c_str());
        }
        return line;
    }

private:
    // The library's functions, by their own types.
    struct Library {
        void* handle = ::dlopen(kEditingLibrary, RTLD_NOW | RTLD_LOCAL);

        template <class Function>
        Function* function(const char* name) const {
            return handle != nullptr ? reinterpret_cast<Function*>(::dlsym(handle, name)) : nullptr;
        }

        decltype(::el_init)* init = function<decltype(::el_init)>("el_init");
        decltype(::el_set)* set = function<decltype(::el_set)>("el_set");
        decltype(::el_gets)* gets = function<decltype(::el_gets)>("el_gets");
        decltype(::el_end)* end = function<decltype(::el_end)>("el_end");
        decltype(::history)* change = function<decltype(::history)>("history");
        decltype(::history_init)* initHistory = function<decltype(::history_init)>("history_init");
        decltype(::history_end)* endHistory = function<decltype(::history_end)>("history_end");

        bool isWhole() const { return init && set && gets && end && change && initHistory && endHistory; }
    };

    Library library_;
    EditLine* editor_ = nullptr;
    History* history_ = nullptr;
};

LineInput::LineInput() : isTerminal_(standardInputIsTerminal()) {
    if (isTerminal_) {
        editor_ = std::make_unique<Editor>();
        if (!editor_->works()) {
            editor_.reset();
        }
    }
}

LineInput::~LineInput() = default;

std::optional<std::string> LineInput::next() { return editor_ ? editor_->next() : plainLine(); }

std::optional<std::string> LineInput::plainLine() {
    if (isTerminal_) {
        std::cerr << kPrompt;
    }
    std::string line;
    int byte = std::cin.get();
    const bool isEnd = byte == std::istream::traits_type::eof();
    for (; byte != '\n' && byte != std::istream::traits_type::eof(); byte = std::cin.get()) {
        if (line.size() < kMostBytes) {
            line += static_cast<char>(byte);
        }
    }
    if (isEnd && isTerminal_) {
        std::cerr << "\n";
    }
    return isEnd ? std::nullopt : std::optional(line);
}

bool LineInput::hasFailed() const { return std::ferror(stdin) != 0; }

}  // namespace lunabrook
