// The attention signal: one handler for each thread.
#include <vsys/attention.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "support/attention.h"
#include "support/threads.h"

namespace {

int answer(void* context) {
    return *static_cast<int*>(context);
}

int refuse(void*) {
    throw std::runtime_error("stop");
}

int removeItself(void*) {
    vsys_set_attention_handler(nullptr, nullptr);
    return 5;
}

TEST(Attention, IsGoodWithoutAHandler) {
    EXPECT_EQ(vsys_attention_check(), 0);
}

TEST(Attention, GivesTheHandlersAnswer) {
    int status = 42;
    vsys_set_attention_handler(&answer, &status);
    EXPECT_EQ(vsys_attention_check(), 42);
    status = 0;
    EXPECT_EQ(vsys_attention_check(), 0);
    vsys_set_attention_handler(nullptr, nullptr);
}

TEST(Attention, ReturnsTheFormerHandlerWhenAnotherIsSet) {
    int first = 1, second = 2;
    const vsys_attention_state none = vsys_set_attention_handler(&answer, &first);
    EXPECT_EQ(none.handler, nullptr);
    EXPECT_EQ(none.context, nullptr);
    const vsys_attention_state former = vsys_set_attention_handler(&answer, &second);
    EXPECT_EQ(former.handler, &answer);
    EXPECT_EQ(former.context, &first);
    EXPECT_EQ(vsys_attention_check(), 2);
    vsys_set_attention_handler(none.handler, none.context);
    EXPECT_EQ(vsys_attention_check(), 0);
}

TEST(Attention, LetsTheHandlersExceptionThrough) {
    const vsys_attention_state former = vsys_set_attention_handler(&refuse, nullptr);
    EXPECT_THROW(vsys_attention_check(), std::runtime_error);
    vsys_set_attention_handler(former.handler, former.context);
}

TEST(Attention, LetsAHandlerRemoveItself) {
    vsys_set_attention_handler(&removeItself, nullptr);
    EXPECT_EQ(vsys_attention_check(), 5);
    EXPECT_EQ(vsys_attention_check(), 0);
}

TEST(Attention, KeepsOneHandlerForEachThread) {
    if (!support::kHasThreads) GTEST_SKIP() << "no threads here";
    const support::AttentionCounter here;
    long polls = 0;
    std::thread([&] {
        EXPECT_EQ(vsys_attention_check(), 0);
        const support::AttentionCounter there;
        vsys_attention_check();
        vsys_attention_check();
        polls = there.polls();
    }).join();
    EXPECT_EQ(polls, 2);
    EXPECT_EQ(here.polls(), 0);
    vsys_attention_check();
    EXPECT_EQ(here.polls(), 1);
}

}  // namespace
