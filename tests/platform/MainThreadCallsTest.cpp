// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/MainThreadCalls.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <optional>
#include <thread>

namespace burnwick {
namespace {

TEST(MainThreadCalls, AnswersOfOtherThreadsArriveOnTheMainThreadUntilTheOwnersEnd) {
    std::optional<MainThreadCalls> calls(std::in_place);
    int answers = 0;
    const auto answer = calls->queued([&, main = std::this_thread::get_id()](int number) {
        EXPECT_EQ(std::this_thread::get_id(), main);
        answers += number;
    });
    std::thread(answer, 1).join();
    answer(2);
    EXPECT_EQ(answers, 0) << "called before the function returned";
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 3);

    answer(4);
    calls.reset();
    std::thread(answer, 8).join();
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 3) << "called after the owner's end";
}

TEST(MainThreadCalls, AnAnswerMayDestroyTheOwner) {
    std::optional<MainThreadCalls> calls(std::in_place);
    int answers = 0;
    const auto answer = calls->queued([&] {
        ++answers;
        calls.reset();
    });
    answer();
    answer();
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 1);
}

} // namespace
} // namespace burnwick
