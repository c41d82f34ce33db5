#include "support/AllocationWatch.h"

#include <dlfcn.h>
#include <pthread.h>

// The program's own locks and waits: counted, then passed on to the C library. A try that doesn't wait isn't counted.

/// X(function, parameters, arguments, exceptions) of each.
#define VYNTEST_EACH_LOCK(X)                                                                                           \
    X(pthread_mutex_lock, (pthread_mutex_t * mutex), (mutex), noexcept)                                                \
    X(pthread_mutex_timedlock, (pthread_mutex_t * mutex, timespec const* until), (mutex, until), noexcept)             \
    X(pthread_mutex_clocklock, (pthread_mutex_t * mutex, clockid_t clock, timespec const* until),                      \
      (mutex, clock, until), noexcept)                                                                                 \
    X(pthread_cond_wait, (pthread_cond_t * condition, pthread_mutex_t * mutex), (condition, mutex), )                  \
    X(pthread_cond_timedwait, (pthread_cond_t * condition, pthread_mutex_t * mutex, timespec const* until),            \
      (condition, mutex, until), )                                                                                     \
    X(pthread_cond_clockwait,                                                                                          \
      (pthread_cond_t * condition, pthread_mutex_t * mutex, clockid_t clock, timespec const* until),                   \
      (condition, mutex, clock, until), )                                                                              \
    X(pthread_rwlock_rdlock, (pthread_rwlock_t * lock), (lock), noexcept)                                              \
    X(pthread_rwlock_wrlock, (pthread_rwlock_t * lock), (lock), noexcept)

namespace {

template <class Function>
Function* Find(char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

#define VYNTEST_FOUND(function, parameters, arguments, exceptions)                                                     \
    int(*function) parameters = Find<int parameters>(#function);

struct NextCalls {
    VYNTEST_EACH_LOCK(VYNTEST_FOUND)
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

#define VYNTEST_INTERPOSED(function, parameters, arguments, exceptions)                                                \
    extern "C" __attribute__((visibility("default"))) int function parameters exceptions {                             \
        vyntest::watch::Note(#function);                                                                               \
        return Next().function arguments;                                                                              \
    }

VYNTEST_EACH_LOCK(VYNTEST_INTERPOSED)
