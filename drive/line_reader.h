#pragma once

#include <string>

namespace drive {

/// The lines of standard input, with a look ahead whether one is there.
class LineReader {
  public:
    /// True when ReadLine wouldn't wait: a line is there, or the input has ended.
    bool HasLine();
    /// Waits for the next line, without its line feed. False when the input has ended.
    bool ReadLine(std::string& line);

  private:
    bool TakeLine(std::string& line);
    void Fill();

    std::string buffer_;
    bool ended_ = false;
};

/// True when the reader of standard output is gone, so that no answer can reach anybody.
bool NobodyReads();

}  // namespace drive
