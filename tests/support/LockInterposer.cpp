#include "support/AllocationWatch.h"

#include <dlfcn.h>
#include <pthread.h>

// The program's own locks and waits: counted, then passed on to the C library. A try that doesn't wait isn't counted.

#define VYNTEST_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

template <class Function>
void Find(Function*& function, char const* name) {
    function = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

struct NextCalls {
    int (*mutexLock)(pthread_mutex_t*);
    int (*mutexTimedLock)(pthread_mutex_t*, timespec const*);
    int (*mutexClockLock)(pthread_mutex_t*, clockid_t, timespec const*);
    int (*conditionWait)(pthread_cond_t*, pthread_mutex_t*);
    int (*conditionTimedWait)(pthread_cond_t*, pthread_mutex_t*, timespec const*);
    int (*conditionClockWait)(pthread_cond_t*, pthread_mutex_t*, clockid_t, timespec const*);
    int (*readLock)(pthread_rwlock_t*);
    int (*writeLock)(pthread_rwlock_t*);

    NextCalls() {
        Find(mutexLock, "pthread_mutex_lock");
        Find(mutexTimedLock, "pthread_mutex_timedlock");
        Find(mutexClockLock, "pthread_mutex_clocklock");
        Find(conditionWait, "pthread_cond_wait");
        Find(conditionTimedWait, "pthread_cond_timedwait");
        Find(conditionClockWait, "pthread_cond_clockwait");
        Find(readLock, "pthread_rwlock_rdlock");
        Find(writeLock, "pthread_rwlock_wrlock");
    }
};

NextCalls const& Next() {
    static NextCalls const calls;
    return calls;
}

// Before main, so that no guarded thread is the first to look the functions up.
__attribute__((constructor)) void FindNextCalls() {
    Next();
    vyntest::watch::SetWatchesLocks();
}

} // namespace

using vyntest::watch::Note;

VYNTEST_EXPORT int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    Note("pthread_mutex_lock");
    return Next().mutexLock(mutex);
}

VYNTEST_EXPORT int pthread_mutex_timedlock(pthread_mutex_t* mutex, timespec const* until) noexcept {
    Note("pthread_mutex_timedlock");
    return Next().mutexTimedLock(mutex, until);
}

VYNTEST_EXPORT int pthread_mutex_clocklock(pthread_mutex_t* mutex, clockid_t clock, timespec const* until) noexcept {
    Note("pthread_mutex_clocklock");
    return Next().mutexClockLock(mutex, clock, until);
}

VYNTEST_EXPORT int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    Note("pthread_cond_wait");
    return Next().conditionWait(condition, mutex);
}

VYNTEST_EXPORT int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, timespec const* until) {
    Note("pthread_cond_timedwait");
    return Next().conditionTimedWait(condition, mutex, until);
}

VYNTEST_EXPORT int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                                          timespec const* until) {
    Note("pthread_cond_clockwait");
    return Next().conditionClockWait(condition, mutex, clock, until);
}

VYNTEST_EXPORT int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
    Note("pthread_rwlock_rdlock");
    return Next().readLock(lock);
}

VYNTEST_EXPORT int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
    Note("pthread_rwlock_wrlock");
    return Next().writeLock(lock);
}
