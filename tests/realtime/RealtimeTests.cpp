// SPDX-License-Identifier: GPL-3.0-or-later

// What the audio thread may not do: allocate, take locks but the effect's own, or enter the system.

#include <atomic>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "AudioThreadProbe.h"
#include "core/FrameworkIds.h"
#include "dsp/phaser/QuilvaneCore.h"
#include "support/MessageLoop.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"
#include "support/TestEffect.h"

using namespace K7R;
using namespace quilvane;

namespace
{

/** The phaser, with its lock in view and controllers that move its parameters. */
class OpenPhaser final : public TestEffect
{
public:
    OpenPhaser() : TestEffect (Quilvane::loadEmbeddedText) {}

    probe::AllowedObject getLock() const { return { &getEffectLock(), sizeof (juce::CriticalSection) }; }

    int getNumPresetParameters() const override { return parameterIds::numPresetParameters; }

protected:
    std::unique_ptr<GlassRailEffectCore> makeCore() override
    {
        return std::make_unique<QuilvaneCore> (getRateConstants());
    }

    bool usesTransport() const override { return true; }

    void handleController (const juce::MidiMessage& message) override
    {
        const auto index = static_cast<size_t> (message.getControllerNumber());
        getParameters().getParameters()[index]->setNormalised (
            static_cast<float> (message.getControllerValue()) / 127.0f, true);
    }
};

/** Blocks of everything that a host does to a running plug-in, prepared beforehand. */
class Session
{
public:
    static constexpr int numBlocks = 512;
    static constexpr int blockSize = 256;

    Session()
    {
        auto effect = std::make_unique<OpenPhaser>();
        const auto lock = effect->getLock();
        plugin = std::make_unique<PluginInTest> (48000.0, blockSize, std::move (effect));
        plugin->processor.addListener (&host);

        // JUCE guards its list of listeners while a controller's change goes to the host.
        allowed = { lock, { &plugin->processor, sizeof (PluginAudioProcessor) } };
        plugin->playHead.fails = false;
        plugin->playHead.playing = true;
        plugin->parameter (frameworkIds::offlineQuality).setInt (1, true);
        plugin->parameter (parameterIds::lfo1Sync).setBool (true, true);
        plugin->parameter (parameterIds::lfo1Depth).setNormalised (0.5f, true);

        for (int i = 0; i < numBlocks; ++i)
            for (int event = 0; event < i % 7; ++event)
                midi[static_cast<size_t> (i)].addEvent (
                    juce::MidiMessage::controllerEvent (1, (i + event) % 18, (31 * i + event) % 128),
                    (event * 61) % (blockSize + 40));

        left = signals::noise (blockSize, 1);
        right = signals::noise (blockSize, 2);
    }

    /** One block, as the audio thread of a host would do it. */
    void run (int index)
    {
        auto& processor = plugin->processor;
        plugin->playHead.bpm = index % 9 == 0 ? 100.0 + index : plugin->playHead.bpm;
        processor.setNonRealtime (index % 16 >= 8);
        processor.setParameter (index % 18, static_cast<float> (index % 11) / 10.0f);
        plugin->processBlock (left.data(), right.data(), blockSize, midi[static_cast<size_t> (index)],
                              index % 13 == 12);
    }

    ~Session() { plugin->processor.removeListener (&host); }

    probe::AllowedObjects allowed {};
    std::unique_ptr<PluginInTest> plugin;

    struct Host : juce::AudioProcessorListener
    {
        void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override { ++changes; }
        void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
        int changes = 0;
    };

    Host host;

private:
    std::array<juce::MidiBuffer, numBlocks> midi;
    std::vector<float> left, right;
};

/** Plays the audio thread while this one serves messages, as in a host. The thread stays in the hands of what
    it did to itself, so it ends without the usual ceremony. */
template <typename Function>
void runOnAudioThread (Function&& function)
{
    std::atomic<bool> done { false };

    std::thread audio (
        [&]
        {
            function();
            done = true;
            syscall (SYS_exit, 0);
        });

    EXPECT_TRUE (runMessageLoopUntil ([&] { return done.load(); }, 60000));
    audio.join();
}

} // namespace

TEST (AudioThread, AllocatesNothingAndTakesNoLockButTheEffectsOwn)
{
    Session session;
    probe::Counts counts, control;
    int hostChanges = 0;

    runOnAudioThread (
        [&]
        {
            // The first round may touch things for the first time.
            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            const auto changesBefore = session.host.changes;
            probe::Watch watch (session.allowed);

            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            counts = watch.stop();
            hostChanges = session.host.changes - changesBefore;

            // The probe itself sees what it should.
            probe::Watch second ({});
            const std::unique_ptr<int> block (new int (1));
            const juce::CriticalSection other;
            const juce::ScopedLock lock (other);
            const juce::WaitableEvent event;
            event.signal();
            control = second.stop();
        });

    EXPECT_EQ (counts.allocations, 0);
    EXPECT_EQ (counts.foreignLocks, 0);
    EXPECT_EQ (counts.conditions, 0);
    EXPECT_GT (hostChanges, 0);
    EXPECT_GT (control.allocations, 0);
    EXPECT_GT (control.foreignLocks, 0);
    EXPECT_GT (control.conditions, 0);
}

//==============================================================================
namespace
{

// How the process of the trap ends.
constexpr int madeNoCall = 0;
constexpr int madeACall = 3;
constexpr int trapIsBlind = 4;
constexpr int trapIsRefused = 5;

volatile std::sig_atomic_t isControl = 0;

/** A trapped call isn't made, so nothing that waits for it can go on: the process ends here. */
void onTrappedCall (int, siginfo_t*, void*)
{
    syscall (SYS_exit_group, isControl != 0 ? madeNoCall : madeACall);
}

/** From here on, every system call of this thread but the end of the process is trapped. */
bool trapSystemCalls()
{
    struct sigaction action = {};
    action.sa_sigaction = onTrappedCall;
    action.sa_flags = SA_SIGINFO;
    sigaction (SIGSYS, &action, nullptr);

    sock_filter filter[] {
        BPF_STMT (BPF_LD | BPF_W | BPF_ABS, offsetof (seccomp_data, nr)),
        BPF_JUMP (BPF_JMP | BPF_JEQ | BPF_K, static_cast<uint32_t> (SYS_exit_group), 1, 0),
        BPF_STMT (BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT (BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog program { static_cast<unsigned short> (std::size (filter)), filter };

    return prctl (PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl (PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/** Plays the session on an audio thread that can't enter the system, and ends the process. */
void playInTrap()
{
    Session session;

    runOnAudioThread (
        [&]
        {
            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            if (! trapSystemCalls())
                syscall (SYS_exit_group, trapIsRefused);

            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            isControl = 1;
            syscall (SYS_getppid);
            syscall (SYS_exit_group, trapIsBlind);
        });
}

} // namespace

TEST (AudioThread, EntersTheSystemNever)
{
    // In a process of its own, which the trap ends.
    GTEST_FLAG_SET (death_test_style, "threadsafe");
    EXPECT_EXIT (playInTrap(), testing::ExitedWithCode (madeNoCall), "");
}
