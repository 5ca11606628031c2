// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLoop.h"

#include <exception>
#include <thread>

#include <juce_events/juce_events.h>

namespace K7R
{
inline namespace tools
{

void runBesideMessageLoop (const std::function<void()>& function)
{
    auto& messages = *juce::MessageManager::getInstance();
    std::exception_ptr failure;

    std::thread thread (
        [&]
        {
            try
            {
                function();
            }
            catch (...)
            {
                failure = std::current_exception();
            }

            messages.stopDispatchLoop();
        });

    messages.runDispatchLoop();
    thread.join();

    if (failure != nullptr)
        std::rethrow_exception (failure);
}

void runOnMessageThread (const std::function<void()>& function)
{
    struct Call
    {
        const std::function<void()>& function;
        std::exception_ptr failure;
    };

    Call call { function, nullptr };

    juce::MessageManager::getInstance()->callFunctionOnMessageThread (
        [] (void* data) -> void*
        {
            auto& c = *static_cast<Call*> (data);

            try
            {
                c.function();
            }
            catch (...)
            {
                c.failure = std::current_exception();
            }

            return nullptr;
        },
        &call);

    if (call.failure != nullptr)
        std::rethrow_exception (call.failure);
}

} // namespace tools
} // namespace K7R
