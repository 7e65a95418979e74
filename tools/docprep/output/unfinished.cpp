#include "output/unfinished.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <vector>

namespace docprep {

namespace {

struct Noted {
    std::recursive_mutex mutex;
    std::vector<const Unfinished*> things;  // in the order in which they were made
};

/// Never destroyed: the waiting thread outlives main.
Noted& noted() {
    static Noted* const instance = new Noted;
    return *instance;
}

sigset_t& awaited() {
    static sigset_t signals;
    return signals;
}

[[noreturn]] void end_by(int signal) {
    noted().mutex.lock();  // for good: nothing new may be made
    for (auto thing = noted().things.rbegin(); thing != noted().things.rend(); ++thing)
        std::remove((*thing)->path().c_str());
    std::signal(signal, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    raise(signal);
    _exit(128 + signal);
}

void* await_signals(void*) {
    int signal = 0;
    while (sigwait(&awaited(), &signal) != 0) {
    }
    end_by(signal);
}

}  // namespace

void remove_unfinished_on_signals() {
    sigset_t& signals = awaited();
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            sigaddset(&signals, signal);
    }
    noted();
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &signals, &before);
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, await_signals, nullptr) == 0)
        pthread_detach(thread);
    else
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

SignalsHeld hold_signals() {
    return SignalsHeld(noted().mutex);
}

void Unfinished::expect(const std::string& path) {
    const SignalsHeld held = hold_signals();
    Noted& all = noted();
    path_ = path;
    all.things.reserve(all.things.size() + 1);
}

void Unfinished::note() noexcept {
    noted().things.push_back(this);  // expect() made room
    noted_ = true;
}

void Unfinished::forget() noexcept {
    if (!noted_) return;
    const SignalsHeld held = hold_signals();
    auto& things = noted().things;
    things.erase(std::remove(things.begin(), things.end(), this), things.end());
    noted_ = false;
}

}  // namespace docprep
