// The process's standard output as std::cout, with what goes wrong kept: the library's own stream forgets the reason.
//
//   StandardOutput output;  // first thing in main
//   std::cout << "answer\n";
//   output.finish() -> 0, or ENOSPC on a full disk, EPIPE when the reader went away

#pragma once

#include <array>
#include <streambuf>

namespace lunabrook {

class StandardOutput : private std::streambuf {
public:
    // From here on a closed pipe fails the write instead of ending the process, and a stream that was closed before the
    // start stays closed: no file that is opened later takes its number.
    StandardOutput();
    ~StandardOutput() override;
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    // Writes what is left; the system's number of the first error so far, or 0.
    int finish();

private:
    int_type overflow(int_type character) override;
    int sync() override;

    std::streambuf* former_;
    std::array<char, 8192> buffer_{};
    int error_ = 0;
};

}  // namespace lunabrook
