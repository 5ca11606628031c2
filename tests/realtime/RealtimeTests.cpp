// SPDX-License-Identifier: GPL-3.0-or-later

// What the audio thread may not do: allocate, take locks but the effect's own, or enter the system.

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
#include "dsp/QuilvaneCore.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"
#include "support/TestEffect.h"

using namespace quilvane;

namespace
{

/** The phaser, with its lock in view and controllers that move its parameters. */
class OpenPhaser final : public TestEffect
{
public:
    OpenPhaser() : TestEffect (Quilvane::loadEmbeddedText) {}

    probe::AllowedLock getAllowedLock() const { return { &getEffectLock(), sizeof (juce::CriticalSection) }; }

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
    static constexpr int numBlocks = 64;
    static constexpr int blockSize = 256;

    Session()
    {
        auto effect = std::make_unique<OpenPhaser>();
        allowedLock = effect->getAllowedLock();
        plugin = std::make_unique<PluginInTest> (48000.0, blockSize, std::move (effect));
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

    probe::AllowedLock allowedLock {};
    std::unique_ptr<PluginInTest> plugin;

private:
    std::array<juce::MidiBuffer, numBlocks> midi;
    std::vector<float> left, right;
};

} // namespace

TEST (AudioThread, AllocatesNothingAndTakesNoLockButTheEffectsOwn)
{
    Session session;
    probe::Counts counts, control;

    std::thread audio (
        [&]
        {
            // The first round may touch things for the first time.
            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            probe::Watch watch (session.allowedLock);

            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            counts = watch.stop();

            // The probe itself sees what it should.
            probe::Watch second ({});
            const std::unique_ptr<int> block (new int (1));
            const juce::CriticalSection other;
            const juce::ScopedLock lock (other);
            control = second.stop();
        });
    audio.join();

    EXPECT_EQ (counts.allocations, 0);
    EXPECT_EQ (counts.foreignLocks, 0);
    EXPECT_EQ (counts.contendedLocks, 0);
    EXPECT_EQ (counts.waits, 0);
    EXPECT_GT (control.allocations, 0);
    EXPECT_GT (control.foreignLocks, 0);
}

//==============================================================================
namespace
{

volatile std::sig_atomic_t trappedCalls = 0;
volatile std::sig_atomic_t lastTrapped = 0;

void onTrappedCall (int, siginfo_t* info, void*)
{
    trappedCalls = trappedCalls + 1;
    lastTrapped = info->si_syscall;
}

/** From here on, every system call of this thread but its end is trapped and counted. */
bool trapSystemCalls()
{
    struct sigaction action
    {
    };
    action.sa_sigaction = onTrappedCall;
    action.sa_flags = SA_SIGINFO;
    sigaction (SIGSYS, &action, nullptr);

    const auto number = [] (long call) { return static_cast<uint32_t> (call); };
    sock_filter filter[] {
        BPF_STMT (BPF_LD | BPF_W | BPF_ABS, offsetof (seccomp_data, nr)),
        BPF_JUMP (BPF_JMP | BPF_JEQ | BPF_K, number (SYS_rt_sigreturn), 2, 0),
        BPF_JUMP (BPF_JMP | BPF_JEQ | BPF_K, number (SYS_exit), 1, 0),
        BPF_STMT (BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT (BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog program { static_cast<unsigned short> (std::size (filter)), filter };

    return prctl (PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl (PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

TEST (AudioThread, EntersTheSystemNever)
{
    Session session;
    int duringBlocks = -1, control = -1, call = 0;
    bool canTrap = false;

    // On a thread of its own, which ends with its filter.
    std::thread audio (
        [&]
        {
            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            canTrap = trapSystemCalls();

            if (! canTrap)
                return;

            for (int i = 0; i < Session::numBlocks; ++i)
                session.run (i);

            duringBlocks = trappedCalls;
            call = lastTrapped;
            syscall (SYS_getppid);
            control = trappedCalls - duringBlocks;

            // A thread's regular end makes more calls than the filter lets through.
            syscall (SYS_exit, 0);
        });

    audio.join();

    if (! canTrap)
        GTEST_SKIP() << "this system doesn't filter system calls";

    EXPECT_EQ (duringBlocks, 0) << "last: " << call;
    EXPECT_EQ (control, 1);
}
