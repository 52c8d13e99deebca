// A library to be preloaded: makes one call of a program fail, to see what the program does then.
//   c++ -std=c++20 -O1 -shared -fPIC tools/fail_calls.cpp -ldl -o fail_calls.so
// FAIL_KIND is `file` for calls of the system that work on files, or `memory` for operator new.
// FAIL_AT is the number, from 1, of the call that fails, 0 for none; FAIL_ERROR the system's error
// number of a file call. FAIL_COUNT names a file that gets the number of calls when the program
// ends. Calls before main and of the system's libraries themselves do not count.
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <new>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Plan {
    bool files = false;
    bool memory = false;
    long at = 0;
    int error = EIO;
    const char* count = nullptr;
};

Plan plan;
std::atomic<bool> counting = false;
std::atomic<long> calls = 0;

bool IsTurn() {
    return counting && ++calls == plan.at;
}

bool FailsFile() {
    if (!plan.files || !IsTurn()) {
        return false;
    }
    errno = plan.error;
    return true;
}

long Number(const char* name, long usual) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtol(text, nullptr, 10) : usual;
}

void ReadPlan() {
    const char* kind = std::getenv("FAIL_KIND");
    plan.files = kind != nullptr && std::strcmp(kind, "file") == 0;
    plan.memory = kind != nullptr && std::strcmp(kind, "memory") == 0;
    plan.at = Number("FAIL_AT", 0);
    plan.error = static_cast<int>(Number("FAIL_ERROR", EIO));
    plan.count = std::getenv("FAIL_COUNT");
}

void WriteCount() {
    counting = false;
    if (plan.count == nullptr) {
        return;
    }
    if (std::FILE* file = std::fopen(plan.count, "w")) {
        std::fprintf(file, "%ld\n", calls.load());
        std::fclose(file);
    }
}

using Main = int (*)(int, char**, char**);
Main realMain = nullptr;

int CountedMain(int argc, char** argv, char** environment) {
    ReadPlan();
    std::atexit(WriteCount);
    counting = true;
    const int code = realMain(argc, argv, environment);
    counting = false;
    return code;
}

// The function that this library stands in front of.
template <typename Function>
Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void* Allocate(std::size_t bytes, std::size_t alignment) {
    if (plan.memory && IsTurn()) {
        return nullptr;
    }
    const std::size_t size = bytes == 0 ? 1 : bytes;
    return alignment == 0
               ? std::malloc(size)
               : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* AllocateOrThrow(std::size_t bytes, std::size_t alignment) {
    void* memory = Allocate(bytes, alignment);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

extern "C" {

int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*end)(), void* stack) {
    using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
    realMain = main;
    return Next<Start>("__libc_start_main")(CountedMain, argc, argv, init, fini, end, stack);
}

int open(const char* path, int flags, ...) {
    std::va_list list;
    va_start(list, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(list, int) : 0;
    va_end(list);
    static const auto next = Next<int (*)(const char*, int, ...)>("open");
    return FailsFile() ? -1 : next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    std::va_list list;
    va_start(list, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(list, int) : 0;
    va_end(list);
    static const auto next = Next<int (*)(const char*, int, ...)>("open64");
    return FailsFile() ? -1 : next(path, flags, mode);
}

ssize_t read(int handle, void* bytes, std::size_t count) {
    static const auto next = Next<ssize_t (*)(int, void*, std::size_t)>("read");
    return FailsFile() ? -1 : next(handle, bytes, count);
}

// The program's own messages are no file.
ssize_t write(int handle, const void* bytes, std::size_t count) {
    static const auto next = Next<ssize_t (*)(int, const void*, std::size_t)>("write");
    return handle > STDERR_FILENO && FailsFile() ? -1 : next(handle, bytes, count);
}

int fsync(int handle) {
    static const auto next = Next<int (*)(int)>("fsync");
    return FailsFile() ? -1 : next(handle);
}

int fchmod(int handle, mode_t mode) {
    static const auto next = Next<int (*)(int, mode_t)>("fchmod");
    return FailsFile() ? -1 : next(handle, mode);
}

int fchown(int handle, uid_t owner, gid_t group) {
    static const auto next = Next<int (*)(int, uid_t, gid_t)>("fchown");
    return FailsFile() ? -1 : next(handle, owner, group);
}

int flock(int handle, int operation) {
    static const auto next = Next<int (*)(int, int)>("flock");
    return FailsFile() ? -1 : next(handle, operation);
}

int rename(const char* from, const char* to) {
    static const auto next = Next<int (*)(const char*, const char*)>("rename");
    return FailsFile() ? -1 : next(from, to);
}

int unlink(const char* path) {
    static const auto next = Next<int (*)(const char*)>("unlink");
    return FailsFile() ? -1 : next(path);
}

int mkdir(const char* path, mode_t mode) {
    static const auto next = Next<int (*)(const char*, mode_t)>("mkdir");
    return FailsFile() ? -1 : next(path, mode);
}

int access(const char* path, int mode) {
    static const auto next = Next<int (*)(const char*, int)>("access");
    return FailsFile() ? -1 : next(path, mode);
}

int stat(const char* path, struct stat* result) {
    static const auto next = Next<int (*)(const char*, struct stat*)>("stat");
    return FailsFile() ? -1 : next(path, result);
}

int fstat(int handle, struct stat* result) {
    static const auto next = Next<int (*)(int, struct stat*)>("fstat");
    return FailsFile() ? -1 : next(handle, result);
}

DIR* opendir(const char* path) {
    static const auto next = Next<DIR* (*)(const char*)>("opendir");
    return FailsFile() ? nullptr : next(path);
}

dirent* readdir(DIR* folder) {
    static const auto next = Next<dirent* (*)(DIR*)>("readdir");
    return FailsFile() ? nullptr : next(folder);
}

} // extern "C"

void* operator new(std::size_t bytes) {
    return AllocateOrThrow(bytes, 0);
}
void* operator new[](std::size_t bytes) {
    return AllocateOrThrow(bytes, 0);
}
void* operator new(std::size_t bytes, std::align_val_t alignment) {
    return AllocateOrThrow(bytes, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t bytes, std::align_val_t alignment) {
    return AllocateOrThrow(bytes, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
    return Allocate(bytes, 0);
}
void* operator new[](std::size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
    return Allocate(bytes, 0);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*bytes*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*bytes*/,
                       std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
