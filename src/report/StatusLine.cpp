// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/StatusLine.h"

#include "forms/TerminalStyle.h"
#include "ledger/Ledger.h"
#include "report/BackgroundProcess.h"
#include "report/TimedInput.h"
#include "statusline/LatestLimits.h"
#include "statusline/StatusLineInput.h"
#include "json/JsonReading.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <unistd.h>

namespace burnwick {

namespace {

using std::chrono::steady_clock;

constexpr std::size_t largestInput = std::size_t{1} << 20U;
constexpr std::chrono::seconds longestInput{1};
/// The assistant starts the command at each message, and expects the answer within some 50 ms.
constexpr std::chrono::milliseconds usualTitle{30};
/// For logs that were never read.
constexpr std::chrono::seconds longestTitle{2};
constexpr std::chrono::seconds longestRecording{10};
/// After this time, a command that has not read all its input gets its end.
constexpr std::chrono::hours longestFeeding{1};

TimedInput readStandardInput() {
    // One byte more shows that the limit is exceeded.
    return ::isatty(STDIN_FILENO) == 1
               ? TimedInput()
               : readUntil(steady_clock::now() + longestInput, STDIN_FILENO, largestInput + 1);
}

/// Returns null for a malformed input.
std::optional<std::vector<Limit>> limitsIn(const TimedInput &input, Instant now) {
    if (!input.isComplete)
        return std::nullopt;
    try {
        return decodeStatusLine(QByteArray::fromStdString(input.bytes), now);
    } catch (const DecodeError &) {
        return std::nullopt;
    }
}

void record(const TitleSources &sources, const std::vector<Limit> &limits) {
    LatestLimits(sources.ledgerFolder).record(limits);
    static_cast<void>(Ledger(sources.ledgerFolder, Patience::brief).recordLimits(limits));
}

std::string titleLine(const TitleSources &sources, const std::vector<Limit> &limits, const Clock &clock,
                      steady_clock::time_point began) {
    const auto figures = titleFigures(sources, clock, {began + usualTitle, began + longestTitle});
    if (!figures)
        return {};
    std::optional<QuotaData> quota;
    const auto session = std::ranges::find(limits, Limit::Kind::session, &Limit::kind);
    if (session != limits.end())
        quota.emplace().fiveHourUsagePct = session->usedPct;
    // The assistant shows the styles, although its pipe is no terminal.
    const char *terminal = std::getenv("TERM");
    const auto colors = terminalColorsFor(true, std::getenv("NO_COLOR"),
                                          terminal != nullptr ? terminal : "xterm", std::getenv("COLORTERM"));
    const StatusIndicator indicator = statusIndicatorFor(quota);
    return styledTitle(buildStatusTitle(figures->tokens, figures->cost, quota, indicator), indicator, colors);
}

void print(const std::string &line) {
    std::fputs((line + '\n').c_str(), stdout);
    std::fflush(stdout);
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Writes the input to the pipe, then the rest of the descriptor, and closes the pipe.
void feed(int pipe, const TimedInput &input, int rest) {
    bool isWritten = writeAll(pipe, input.bytes);
    std::array<char, 65'536> block;
    ssize_t count = 0;
    while (isWritten && !input.isComplete && (count = ::read(rest, block.data(), block.size())) > 0)
        isWritten = writeAll(pipe, {block.data(), static_cast<std::size_t>(count)});
    ::close(pipe);
}

/// Replaces this process by the command, so that its exit status, signals and output pass unchanged. Returns
/// only if that is not possible.
void execute(const std::vector<std::string> &command, const TimedInput &input,
             const std::function<void()> &afterwards) {
    std::array<int, 2> pipe{-1, -1};
    const int rest = ::dup(STDIN_FILENO);
    if (::pipe(pipe.data()) != 0)
        return;
    runInBackground(longestFeeding, [&] {
        ::close(pipe[0]);
        feed(pipe[1], input, rest);
        afterwards();
    });
    ::close(pipe[1]);
    ::close(rest);
    ::dup2(pipe[0], STDIN_FILENO);
    ::close(pipe[0]);
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    ::execvp(arguments.front(), arguments.data());
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int runStatusLine(const TitleSources &sources, const std::vector<std::string> &command, const Clock &clock) {
    const auto began = steady_clock::now();
    const TimedInput input = readStandardInput();
    const auto limits = limitsIn(input, clock.now());
    const auto recordLimits = [&] {
        if (limits && !limits->empty())
            record(sources, *limits);
    };
    if (!command.empty() && ::isatty(STDIN_FILENO) == 0)
        execute(command, input, recordLimits);
    print(limits && command.empty() ? titleLine(sources, *limits, clock, began) : "");
    if (command.empty() && limits && !limits->empty())
        runInBackground(longestRecording, recordLimits);
    return 0;
}

} // namespace burnwick
