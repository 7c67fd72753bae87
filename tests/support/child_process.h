// A helper program of the suite's, started from the directory of the test
// program, waited for or killed. A child still running when its object goes
// is killed, so a failed test leaves nothing behind.
#ifndef OXL_TESTS_CHILD_PROCESS_H
#define OXL_TESTS_CHILD_PROCESS_H

#include <string>
#include <vector>

class ChildProcess {
public:
    ChildProcess(const std::string& program, const std::vector<std::string>& args);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool Started() const { return m_started; }
    // The exit code, or -1 when the child is still running after `ms`.
    int Wait(unsigned ms);
    void Kill();

private:
    bool m_started = false;
    bool m_done = false;
    int m_code = -1;
#ifdef _WIN32
    void* m_process = nullptr;
#else
    int m_pid = -1;
#endif
};

// Reserves (without committing) `bytes` at exactly `at`, so that nothing else
// can be mapped there; false when the address is taken already.
bool ReserveAddress(void* at, unsigned bytes);
void ReleaseAddress(void* at, unsigned bytes);

#endif
