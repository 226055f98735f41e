#include "drive/line_reader.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace drive {

void LineReader::Fill() {
    std::array<char, 65536> block;
    const ssize_t length = read(STDIN_FILENO, block.data(), block.size());
    if (length > 0)
        buffer_.append(block.data(), static_cast<std::size_t>(length));
    else
        ended_ = true;
}

bool LineReader::HasLine() {
    while (!ended_ && buffer_.find('\n') == std::string::npos) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, 0) <= 0) return false;
        Fill();
    }
    return true;
}

bool LineReader::TakeLine(std::string& line) {
    const std::size_t end = buffer_.find('\n');
    if (end == std::string::npos && (!ended_ || buffer_.empty())) return false;
    line = buffer_.substr(0, end);
    buffer_.erase(0, end == std::string::npos ? end : end + 1);
    return true;
}

bool LineReader::AlarmWent() const {
    pollfd alarm{alarm_, POLLIN, 0};
    return poll(&alarm, 1, 0) > 0;
}

bool LineReader::AwaitInput() const {
    std::array<pollfd, 2> handles{{{STDIN_FILENO, POLLIN, 0}, {alarm_, POLLIN, 0}}};
    while (poll(handles.data(), handles.size(), -1) < 0)
        if (errno != EINTR) return true;
    return handles[1].revents == 0;
}

bool LineReader::ReadLine(std::string& line) {
    if (AlarmWent()) return false;
    while (!TakeLine(line)) {
        if (ended_ || !AwaitInput()) return false;
        Fill();
    }
    return true;
}

bool NobodyReads() {
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
}

}  // namespace drive
