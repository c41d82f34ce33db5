#include "vynhost/BackgroundSaver.h"

#include "vynhost/StoredFiles.h"

#include <utility>

namespace vynhost {

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
        try {
            SaveText(mFile, text);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        mSaving = false;
        mFailure = mFailure ? mFailure : failure;
        mChanged.notify_all();
    }
}

} // namespace vynhost
