#include "midi/backends/jack/jack_server.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <jack/jack.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tracksmith::test {
namespace {

constexpr int kNotExecutable = 127;

[[noreturn]] void BecomeServer(const char* name) {
    // A test that crashes must not leave a server behind.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execlp("jackd", "jackd", "-n", name, "--no-realtime", "-S", "-d", "dummy", "-r", "48000", "-p",
           "256", nullptr);
    _exit(kNotExecutable);
}

} // namespace

bool ServerAnswers() {
    jack_client_t* const client = jack_client_open("probe", JackNoStartServer, nullptr);
    if (client != nullptr) {
        jack_client_close(client);
    }
    return client != nullptr;
}

JackServer::JackServer() {
    static int count = 0;
    name_ = "tracksmith-test-" + std::to_string(getpid()) + "-" + std::to_string(++count);
    setenv("JACK_DEFAULT_SERVER", name_.c_str(), 1);
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
}

JackServer::~JackServer() {
    // A killed server keeps its place among the eight of the machine until one of the same name has
    // ended in order, and leaves the semaphores of its clients.
    if (killed_) {
        Start();
    }
    End(SIGTERM);
    for (const auto& entry : std::filesystem::directory_iterator("/dev/shm")) {
        const std::string file = entry.path().filename().string();
        if (file.starts_with("jack_") && file.find(name_ + "_") != std::string::npos) {
            std::error_code ignored;
            std::filesystem::remove(entry.path(), ignored);
        }
    }
}

std::string JackServer::Start() {
    killed_ = false;
    process_ = fork();
    if (process_ == 0) {
        BecomeServer(name_.c_str());
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!ServerAnswers()) {
        int status = 0;
        if (waitpid(process_, &status, WNOHANG) != 0) {
            process_ = 0;
            return WIFEXITED(status) && WEXITSTATUS(status) == kNotExecutable
                       ? "jackd cannot be run; is it installed (package jackd2)?"
                       : "jackd ended while starting";
        }
        if (std::chrono::steady_clock::now() > deadline) {
            return "jackd takes no clients after 20 seconds";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return {};
}

void JackServer::Freeze() const {
    kill(process_, SIGSTOP);
}

void JackServer::Thaw() const {
    kill(process_, SIGCONT);
}

void JackServer::End(int signal) {
    if (process_ > 0) {
        kill(process_, signal);
        Thaw();
        waitpid(process_, nullptr, 0);
        process_ = 0;
        killed_ = signal == SIGKILL;
    }
}

} // namespace tracksmith::test
