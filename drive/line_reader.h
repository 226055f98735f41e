#pragma once

#include <string>

namespace drive {

/// The lines of standard input, with a look ahead whether one is there.
class LineReader {
  public:
    /// `alarm` is a file handle that ends the waiting when it can be read.
    explicit LineReader(int alarm) : alarm_(alarm) {}

    /// True when ReadLine wouldn't wait for input: a line is there, or the input has ended.
    bool HasLine();
    /// Waits for the next line, without its line feed. False when the input has ended, or the alarm went; lines that
    /// are there are left then.
    bool ReadLine(std::string& line);

  private:
    bool TakeLine(std::string& line);
    void Fill();
    /// Waits until there is input. False when the alarm went first.
    bool AwaitInput() const;
    bool AlarmWent() const;

    int alarm_;

    std::string buffer_;
    bool ended_ = false;
};

/// True when the reader of standard output is gone, so that no answer can reach anybody.
bool NobodyReads();

}  // namespace drive
