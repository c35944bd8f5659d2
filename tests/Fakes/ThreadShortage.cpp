#include "Fakes/ThreadShortage.h"

#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

namespace {

thread_local bool threadsAreShort = false;

} // namespace

// Stands before the C library's own in every program that links this file.
extern "C" int pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument)
{
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    return threadsAreShort ? EAGAIN : create(thread, attributes, start, argument);
}

namespace Fakes {

ThreadShortage::ThreadShortage()
{
    threadsAreShort = true;
}

ThreadShortage::~ThreadShortage()
{
    threadsAreShort = false;
}

} // namespace Fakes
