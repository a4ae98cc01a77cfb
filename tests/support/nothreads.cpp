// SPDX-License-Identifier: Apache-2.0
//
// Stands before the C library's pthread_create(), which fails while the process has THREADS threads
// beside the first one, as where a user has as many as the system allows.
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <new>
#include <pthread.h>

namespace {

struct Task
{
    void* (*run)(void*);
    void* argument;
};

std::atomic<int> living = 0;

void* runAndCount(void* pointer)
{
    const Task task = *static_cast<Task*>(pointer);
    delete static_cast<Task*>(pointer);
    void* const result = task.run(task.argument);
    --living;
    return result;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int
pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
               void* argument)
{
    static const auto original =
        reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    static const char* const most = std::getenv("THREADS");
    if (++living <= std::atoi(most ? most : "0")) {
        if (auto* const task = new (std::nothrow) Task{run, argument})
            return original(thread, attributes, runAndCount, task);
    }
    --living;
    return EAGAIN;
}
