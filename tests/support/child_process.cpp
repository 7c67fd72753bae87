#include "child_process.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
extern char** environ;
#endif

#include <chrono>
#include <thread>

#ifdef _WIN32

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& args) {
    char self[MAX_PATH];
    std::string line(self, GetModuleFileNameA(nullptr, self, MAX_PATH));
    line = "\"" + line.substr(0, line.find_last_of("\\/") + 1) + program + ".exe\""; // beside the test program
    for (const auto& a : args) line += " " + a;
    STARTUPINFOA si = {};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi = {};
    if ((m_started = CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))) {
        CloseHandle(pi.hThread);
        m_process = pi.hProcess;
    }
}
ChildProcess::~ChildProcess() {
    if (m_started) Kill(), CloseHandle(m_process);
}
int ChildProcess::Wait(unsigned ms) {
    DWORD code = 0;
    if (m_started && !m_done && WaitForSingleObject(m_process, ms) == WAIT_OBJECT_0 && GetExitCodeProcess(m_process, &code))
        m_code = int(code), m_done = true;
    return m_done ? m_code : -1;
}
void ChildProcess::Kill() {
    if (m_started && !m_done) TerminateProcess(m_process, 9), Wait(INFINITE);
}
bool ReserveAddress(void* at, unsigned bytes) { return VirtualAlloc(at, bytes, MEM_RESERVE, PAGE_NOACCESS) == at; }
void ReleaseAddress(void* at, unsigned) { VirtualFree(at, 0, MEM_RELEASE); }

#else

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& args) {
    char self[4096];
    ssize_t n = readlink("/proc/self/exe", self, sizeof self);
    std::string path(self, n > 0 ? size_t(n) : 0);
    path = path.substr(0, path.find_last_of('/') + 1) + program; // beside the test program
    std::vector<std::string> copies(args);
    std::vector<char*> argv{path.data()};
    for (auto& a : copies) argv.push_back(a.data());
    argv.push_back(nullptr);
    m_started = posix_spawn(&m_pid, path.c_str(), nullptr, nullptr, argv.data(), environ) == 0;
}
ChildProcess::~ChildProcess() { Kill(); }
int ChildProcess::Wait(unsigned ms) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (int status = 0; m_started && !m_done; std::this_thread::sleep_for(std::chrono::milliseconds(5))) {
        if (waitpid(m_pid, &status, WNOHANG) == m_pid)
            m_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), m_done = true;
        else if (std::chrono::steady_clock::now() >= deadline)
            break;
    }
    return m_done ? m_code : -1;
}
void ChildProcess::Kill() {
    if (m_started && !m_done) kill(m_pid, SIGKILL), Wait(60000);
}
bool ReserveAddress(void* at, unsigned bytes) {
    void* p = mmap(at, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED_NOREPLACE, -1, 0);
    if (p != MAP_FAILED && p != at) munmap(p, bytes);
    return p == at;
}
void ReleaseAddress(void* at, unsigned bytes) { munmap(at, bytes); }

#endif
