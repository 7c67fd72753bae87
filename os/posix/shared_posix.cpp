// Named shared memory and a named mutex for the POSIX backend.
//
// Windows keeps a named object while any process has it open, forgets it when
// the last one closes, and tells its creator apart from later openers. POSIX
// shared-memory objects outlive their users, so each object here keeps that
// bookkeeping in an open-file-description lock on its descriptor: every
// process that has the object open holds a read lock on it. Whoever gets the
// write lock is alone with the object: on opening, it is new or left over by
// processes that are all gone, so the opener makes it afresh and is its
// creator; on closing, nobody else has it, so its name goes, as Windows
// forgets the object. A write lock turns into a read lock in one step, with
// no moment unlocked for another opener to slip in. An opener that waited
// for its read lock while a closer removed the name sees a different inode
// under the name (or none) and starts again.
//
// The mutex is a robust, recursive, process-shared pthread mutex in an object
// of its own. The kernel hands the mutex of an owner that died to the next
// waiter with EOWNERDEAD: Windows' abandoned mutex.
#include "../osl.h"
#include "shared_posix.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

// Every user may open an object made with this mode; others are the owner's.
constexpr mode_t kOpenToAll = 0666;
constexpr mode_t kOwnerOnly = 0600;
constexpr WORD kDaclPresent = 0x0004;

struct SharedObject {
    enum Kind { MAPPING, MUTEX } kind;
    int fd;
    std::string name;
    pthread_mutex_t* mutex; // MUTEX: the mapped mutex
};

bool Lock(int fd, short type, bool wait) {
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    for (;;) {
        if (fcntl(fd, wait ? F_OFD_SETLKW : F_OFD_SETLK, &lock) == 0) return true;
        if (errno != EINTR) return false;
    }
}

// Whether `name` still names the object open on `fd`.
bool StillNamed(int fd, const std::string& name) {
    int other = shm_open(name.c_str(), O_RDONLY | O_CLOEXEC, 0);
    if (other < 0) return false;
    struct stat a, b;
    bool same = fstat(fd, &a) == 0 && fstat(other, &b) == 0 && a.st_ino == b.st_ino && a.st_dev == b.st_dev;
    close(other);
    return same;
}

mode_t ModeOf(LPSECURITY_ATTRIBUTES sa) {
    auto* sd = sa ? static_cast<const SECURITY_DESCRIPTOR*>(sa->lpSecurityDescriptor) : nullptr;
    return sd && (sd->Control & kDaclPresent) && !sd->Dacl ? kOpenToAll : kOwnerOnly;
}

// Opens or creates `name` (a POSIX name, with its slash), holding a read
// lock on return. A fresh object gets `bytes` zero bytes and `make` run on
// it while the opener is alone with it; *fresh tells the creator.
template <class Make>
int OpenCounted(const std::string& name, mode_t mode, off_t bytes, bool* fresh, Make make) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        int fd = shm_open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, mode);
        if (fd < 0) return -1;
        bool ok;
        if (Lock(fd, F_WRLCK, false)) {
            // fchmod: the mode of shm_open is cut by the umask.
            ok = ftruncate(fd, 0) == 0 && ftruncate(fd, bytes) == 0 && fchmod(fd, mode) == 0 && make(fd) &&
                 Lock(fd, F_RDLCK, false);
            *fresh = true;
        } else {
            ok = Lock(fd, F_RDLCK, true);
            *fresh = false;
        }
        if (ok && StillNamed(fd, name)) return fd;
        close(fd);
        if (!ok) return -1;
    }
    return -1;
}

// Closes this process's use of an object; the last user removes its name.
void CloseCounted(int fd, const std::string& name) {
    if (Lock(fd, F_WRLCK, false) && StillNamed(fd, name)) shm_unlink(name.c_str());
    close(fd);
}

// The objects this process has open. Windows closes a process's handles when
// it ends, and the mutex's handle is kept until then; here, when the library
// goes, the names of objects that nobody else has open are removed, so that
// they don't pile up. The objects themselves stay usable to the end: only
// their names go.
class OpenObjects {
public:
    ~OpenObjects() {
        std::lock_guard<std::mutex> hold(m_lock);
        for (SharedObject* object : m_list)
            if (Lock(object->fd, F_WRLCK, false) && StillNamed(object->fd, object->name))
                shm_unlink(object->name.c_str());
    }
    void Add(SharedObject* object) {
        std::lock_guard<std::mutex> hold(m_lock);
        m_list.push_back(object);
    }
    void Remove(SharedObject* object) {
        std::lock_guard<std::mutex> hold(m_lock);
        std::erase(m_list, object);
    }

private:
    std::mutex m_lock;
    std::vector<SharedObject*> m_list;
} sOpen;

// Views and their lengths, for munmap.
struct Views {
    std::mutex lock;
    std::vector<std::pair<void*, size_t>> list;
};
Views& views() {
    static Views v;
    return v;
}

BOOL openToAll(PSECURITY_DESCRIPTOR sd) {
    *sd = {};
    sd->Revision = 1;
    sd->Control = kDaclPresent; // present, and null: everyone may open
    return TRUE;
}

HANDLE createMapping(LPSECURITY_ATTRIBUTES sa, LPCSTR name, DWORD bytes, BOOL* created) {
    if (!name || !bytes) return nullptr;
    auto* object = new SharedObject{SharedObject::MAPPING, -1, std::string("/") + name, nullptr};
    bool fresh = false;
    object->fd = OpenCounted(object->name, ModeOf(sa), bytes, &fresh, [](int) { return true; });
    if (object->fd < 0) {
        delete object;
        return nullptr;
    }
    *created = fresh;
    sOpen.Add(object);
    return object;
}

LPVOID mapAt(HANDLE h, LPVOID at) {
    auto* object = static_cast<SharedObject*>(h);
    struct stat st;
    if (!object || object->kind != SharedObject::MAPPING || fstat(object->fd, &st) != 0 || st.st_size <= 0)
        return nullptr;
    size_t length = size_t(st.st_size);
    void* view = mmap(at, length, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED_NOREPLACE, object->fd, 0);
    if (view == MAP_FAILED) return nullptr;
    if (view != at) { // a kernel without MAP_FIXED_NOREPLACE takes the address as a hint
        munmap(view, length);
        return nullptr;
    }
    std::lock_guard<std::mutex> hold(views().lock);
    views().list.emplace_back(view, length);
    return view;
}

BOOL unmap(LPVOID view) {
    std::lock_guard<std::mutex> hold(views().lock);
    auto& list = views().list;
    for (auto it = list.begin(); it != list.end(); ++it) {
        if (it->first != view) continue;
        munmap(it->first, it->second);
        list.erase(it);
        return TRUE;
    }
    return FALSE;
}

bool MakeMutex(int fd) {
    void* at = mmap(nullptr, sizeof(pthread_mutex_t), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (at == MAP_FAILED) return false;
    pthread_mutexattr_t attr;
    pthread_mutexattr_init(&attr);
    pthread_mutexattr_setpshared(&attr, PTHREAD_PROCESS_SHARED);
    pthread_mutexattr_settype(&attr, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutexattr_setrobust(&attr, PTHREAD_MUTEX_ROBUST);
    bool ok = pthread_mutex_init(static_cast<pthread_mutex_t*>(at), &attr) == 0;
    pthread_mutexattr_destroy(&attr);
    munmap(at, sizeof(pthread_mutex_t));
    return ok;
}

HANDLE createMutex(LPSECURITY_ATTRIBUTES sa, LPCSTR name) {
    if (!name) return nullptr;
    auto* object = new SharedObject{SharedObject::MUTEX, -1, std::string("/") + name, nullptr};
    bool fresh = false;
    object->fd = OpenCounted(object->name, ModeOf(sa), sizeof(pthread_mutex_t), &fresh, MakeMutex);
    void* at = object->fd < 0 ? MAP_FAILED
                              : mmap(nullptr, sizeof(pthread_mutex_t), PROT_READ | PROT_WRITE, MAP_SHARED, object->fd, 0);
    if (at == MAP_FAILED) {
        if (object->fd >= 0) CloseCounted(object->fd, object->name);
        delete object;
        return nullptr;
    }
    object->mutex = static_cast<pthread_mutex_t*>(at);
    sOpen.Add(object);
    return object;
}

pthread_mutex_t* MutexOf(HANDLE h) {
    auto* object = static_cast<SharedObject*>(h);
    return object && object->kind == SharedObject::MUTEX ? object->mutex : nullptr;
}

DWORD waitMutex(HANDLE h, DWORD ms) {
    pthread_mutex_t* m = MutexOf(h);
    if (!m) return WAIT_FAILED;
    timespec deadline;
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += ms / 1000;
    deadline.tv_nsec += long(ms % 1000) * 1000000;
    if (deadline.tv_nsec >= 1000000000) {
        deadline.tv_sec += 1;
        deadline.tv_nsec -= 1000000000;
    }
    switch (pthread_mutex_timedlock(m, &deadline)) {
    case 0: return WAIT_OBJECT_0;
    case EOWNERDEAD: pthread_mutex_consistent(m); return WAIT_ABANDONED;
    case ETIMEDOUT: return WAIT_TIMEOUT;
    default: return WAIT_FAILED;
    }
}

BOOL releaseMutex(HANDLE h) {
    pthread_mutex_t* m = MutexOf(h);
    return m && pthread_mutex_unlock(m) == 0;
}

BOOL closeHandle(HANDLE h) {
    auto* object = static_cast<SharedObject*>(h);
    if (!object) return FALSE;
    sOpen.Remove(object);
    if (object->mutex) munmap(object->mutex, sizeof(pthread_mutex_t));
    CloseCounted(object->fd, object->name);
    delete object;
    return TRUE;
}

} // namespace

constinit const OslSharedService kOslPosixShared = {openToAll, createMapping, mapAt, unmap,
                                                     createMutex, waitMutex, releaseMutex, closeHandle};
