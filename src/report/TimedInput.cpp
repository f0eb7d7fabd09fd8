// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/TimedInput.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace burnwick {

TimedInput readUntil(std::chrono::steady_clock::time_point deadline, int descriptor, std::size_t most) {
    using namespace std::chrono;
    TimedInput input;
    std::array<char, 65'536> block;
    while (input.bytes.size() < most) {
        const auto left = ceil<milliseconds>(deadline - steady_clock::now()).count();
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(std::max<milliseconds::rep>(left, 0)));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            break;
        const ssize_t count =
            ::read(descriptor, block.data(), std::min(block.size(), most - input.bytes.size()));
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (count <= 0) {
            input.isComplete = count == 0;
            break;
        }
        input.bytes.append(block.data(), static_cast<std::size_t>(count));
    }
    return input;
}

} // namespace burnwick
