#include "vynhost/BackgroundSaver.h"

#include "vynhost/StoredFiles.h"

#include "os/Clock.h"

#include <algorithm>
#include <utility>

namespace vynhost {

namespace {

constexpr std::uint64_t kTimesTheCost = 10;
constexpr std::uint64_t kLongestPause = 1'000'000'000; ///< in nanoseconds
constexpr std::uint64_t kTurn = 2'000'000; ///< in nanoseconds, until a file that is being saved is asked after again

} // namespace

BackgroundSaver::BackgroundSaver(vyncore::filesupport::File file)
    : mFile(std::move(file)), mThread([this] { Work(); }) {}

BackgroundSaver::~BackgroundSaver() {
    {
        std::lock_guard const lock(mMutex);
        mEnding = true;
    }
    mChanged.notify_all();
    mThread.join();
}

bool BackgroundSaver::IsIdle() {
    std::lock_guard const lock(mMutex);
    ThrowFailure();
    return IsAtRest();
}

void BackgroundSaver::Save(vyncore::UTF8String text) {
    {
        std::lock_guard const lock(mMutex);
        ThrowFailure();
        mNext = std::move(text);
    }
    mChanged.notify_all();
}

std::optional<std::uint64_t> BackgroundSaver::SaveWhenDue(std::function<vyncore::UTF8String()> const& makeText) {
    std::uint64_t const start = os::GetMonotonicNanos();
    // While the file is being saved its next text isn't even made. A failure is to be seen soon, though.
    if (!IsIdle())
        return start + kTurn;
    if (!mIsOutdated)
        return std::nullopt;
    if (std::uint64_t const due = GetDueTime(); start < due)
        return due;
    vyncore::UTF8String text = makeText();
    mMakingTime = os::GetMonotonicNanos() - start;
    Save(std::move(text));
    mIsOutdated = false;
    return start + kTurn;
}

std::uint64_t BackgroundSaver::GetDueTime() {
    std::lock_guard const lock(mMutex);
    return mSavedAt + std::min(kTimesTheCost * (mMakingTime + mSavingTime), kLongestPause);
}

void BackgroundSaver::Finish(std::function<vyncore::UTF8String()> const& makeText) {
    if (mIsOutdated)
        Save(makeText());
    mIsOutdated = false;
    Finish();
}

void BackgroundSaver::Finish() {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return IsAtRest() || mFailure; });
    ThrowFailure();
}

void BackgroundSaver::ThrowFailure() const {
    if (mFailure)
        std::rethrow_exception(mFailure);
}

void BackgroundSaver::Work() {
    std::unique_lock lock(mMutex);
    while (true) {
        mChanged.wait(lock, [this] { return mNext || mEnding; });
        if (!mNext)
            return;
        vyncore::UTF8String const text = *std::exchange(mNext, std::nullopt);
        mSaving = true;
        lock.unlock();
        std::exception_ptr failure;
        std::uint64_t const start = os::GetMonotonicNanos();
        try {
            SaveText(mFile, text);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        mSaving = false;
        mSavedAt = os::GetMonotonicNanos();
        mSavingTime = mSavedAt - start;
        mFailure = mFailure ? mFailure : failure;
        mChanged.notify_all();
    }
}

} // namespace vynhost
