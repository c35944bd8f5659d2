#include "Fakes/ThreadShortage.h"

#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

namespace {

thread_local bool threadsAreShort = false;

} // namespace

using Start = void* (*)(void*);

// Stands before the C library's own pthread_create in every program that links this file.
extern "C" int createThreadUnlessShort(pthread_t* thread, const pthread_attr_t* attributes,
    Start start, void* argument) __asm__("pthread_create");

extern "C" int createThreadUnlessShort(
    pthread_t* thread, const pthread_attr_t* attributes, Start start, void* argument)
{
    using Create = int (*)(pthread_t*, const pthread_attr_t*, Start, void*);
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
