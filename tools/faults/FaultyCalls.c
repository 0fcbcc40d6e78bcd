/* Preloaded: a fault at the n-th call below a folder that changes the disk.
   FAULTY_FOLDER   only calls on paths below it count; FAULTY_LOG gets a line for each
   FAULTY_CALL     number of the call, from 1; 0 for none
   FAULTY_WAY      kill      the program dies in the place of the call
                   half      a write takes half of its bytes, then the program dies; another call: as kill
                   full      a write takes half, and from then on there is no room; another call: no room
                   NUMBER    the call fails with that errno; with a "+" behind it all later ones as well */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

enum Verdict { Goes, Fails, TakesHalf, TakesHalfAndDies };

static struct
{
    int known, wanted, seen, number, forGood, half, full, noRoom;
    const char *folder, *log;
} plan;

static void learn(void)
{
    const char *call, *way;
    if (plan.known)
        return;
    plan.known = 1;
    plan.folder = getenv("FAULTY_FOLDER");
    plan.log = getenv("FAULTY_LOG");
    call = getenv("FAULTY_CALL");
    way = getenv("FAULTY_WAY");
    plan.wanted = call ? atoi(call) : 0;
    if (way == NULL)
        return;
    plan.half = strcmp(way, "half") == 0;
    plan.full = strcmp(way, "full") == 0;
    plan.number = plan.full ? ENOSPC : atoi(way);
    plan.forGood = strchr(way, '+') != NULL;
}

static int concerns(const char *path)
{
    return plan.folder != NULL && path != NULL && strncmp(path, plan.folder, strlen(plan.folder)) == 0;
}

static int nameOf(int file, char *name)
{
    char link[64];
    ssize_t length;
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    length = readlink(link, name, PATH_MAX - 1);
    name[length < 0 ? 0 : length] = 0;
    return concerns(name);
}

static void die(void)
{
    syscall(SYS_kill, getpid(), SIGKILL);
    for (;;)
        pause();
}

static void note(const char *call, const char *name)
{
    char line[PATH_MAX + 64];
    const int length = snprintf(line, sizeof line, "%s %s\n", call, name + strlen(plan.folder));
    const long file = syscall(SYS_openat, AT_FDCWD, plan.log, O_WRONLY | O_CREAT | O_APPEND, 0600);
    syscall(SYS_write, file, line, (size_t)length);
    syscall(SYS_close, file);
}

static enum Verdict judge(const char *call, const char *name, int writes)
{
    ++plan.seen;
    if (plan.log != NULL)
        note(call, name);
    if (plan.noRoom && writes) {
        errno = ENOSPC;
        return Fails;
    }
    if (plan.wanted == 0 || (plan.forGood ? plan.seen < plan.wanted : plan.seen != plan.wanted))
        return Goes;
    if (plan.full) {
        plan.noRoom = 1;
        errno = ENOSPC;
        return writes ? TakesHalf : Fails;
    }
    if (plan.number != 0) {
        errno = plan.number;
        return Fails;
    }
    if (!plan.half || !writes)
        die();
    return TakesHalfAndDies;
}

static int onPath(const char *call, const char *path)
{
    learn();
    return concerns(path) && judge(call, path, 0) != Goes;
}

static int onFile(const char *call, int file)
{
    char name[PATH_MAX];
    learn();
    return nameOf(file, name) && judge(call, name, 0) != Goes;
}

static ssize_t writes(int file, const void *bytes, size_t count, off_t offset, int placed)
{
    char name[PATH_MAX];
    enum Verdict verdict = Goes;
    ssize_t done;
    learn();
    if (nameOf(file, name))
        verdict = judge(placed ? "pwrite" : "write", name, 1);
    if (verdict == Fails)
        return -1;
    if (verdict != Goes)
        count /= 2;
    if (verdict == TakesHalf && count == 0) {
        errno = ENOSPC;
        return -1;
    }
    done = placed ? syscall(SYS_pwrite64, file, bytes, count, offset) : syscall(SYS_write, file, bytes, count);
    if (verdict == TakesHalfAndDies)
        die();
    return done;
}

static int opens(const char *path, int flags, mode_t mode)
{
    learn();
    if (((flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT)) && onPath("open", path))
        return -1;
    return (int)syscall(SYS_openat, AT_FDCWD, path, flags, mode);
}

static mode_t modeOf(int flags, va_list rest)
{
    return (flags & (O_CREAT | O_TMPFILE)) ? (mode_t)va_arg(rest, int) : 0;
}

int open(const char *path, int flags, ...)
{
    va_list rest;
    mode_t mode;
    va_start(rest, flags);
    mode = modeOf(flags, rest);
    va_end(rest);
    return opens(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list rest;
    mode_t mode;
    va_start(rest, flags);
    mode = modeOf(flags, rest);
    va_end(rest);
    return opens(path, flags, mode);
}

ssize_t write(int file, const void *bytes, size_t count) { return writes(file, bytes, count, 0, 0); }
ssize_t pwrite(int file, const void *bytes, size_t count, off_t at) { return writes(file, bytes, count, at, 1); }
ssize_t pwrite64(int file, const void *bytes, size_t count, off64_t at) { return writes(file, bytes, count, at, 1); }

#define ON_FILE(name, number, ...)                                                                                      \
    return onFile(name, file) ? -1 : (int)syscall(number, __VA_ARGS__)
#define ON_PATH(name, number, ...)                                                                                      \
    return onPath(name, path) ? -1 : (int)syscall(number, __VA_ARGS__)

int ftruncate(int file, off_t size) { ON_FILE("ftruncate", SYS_ftruncate, file, size); }
int ftruncate64(int file, off64_t size) { ON_FILE("ftruncate", SYS_ftruncate, file, size); }
int fsync(int file) { ON_FILE("fsync", SYS_fsync, file); }
int fdatasync(int file) { ON_FILE("fdatasync", SYS_fdatasync, file); }
int fchmod(int file, mode_t mode) { ON_FILE("fchmod", SYS_fchmod, file, mode); }
int futimens(int file, const struct timespec times[2]) { ON_FILE("futimens", SYS_utimensat, file, NULL, times, 0); }
int unlink(const char *path) { ON_PATH("unlink", SYS_unlink, path); }
int mkdir(const char *path, mode_t mode) { ON_PATH("mkdir", SYS_mkdir, path, mode); }
int chmod(const char *path, mode_t mode) { ON_PATH("chmod", SYS_chmod, path, mode); }
int rename(const char *from, const char *path) { ON_PATH("rename", SYS_rename, from, path); }
int link(const char *from, const char *path) { ON_PATH("link", SYS_link, from, path); }
int symlink(const char *to, const char *path) { ON_PATH("symlink", SYS_symlink, to, path); }

int renameat2(int fromFolder, const char *from, int folder, const char *path, unsigned flags)
{
    ON_PATH("rename", SYS_renameat2, fromFolder, from, folder, path, flags);
}
