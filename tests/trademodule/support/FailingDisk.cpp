#include "tests/trademodule/support/FailingDisk.h"

#include "trademodule/ledger/Database.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <initializer_list>

namespace TradeModule {

namespace {

using Fault = FailingDisk::Fault;
using Lasting = FailingDisk::Lasting;

/// Which operation fails. SQLite asks for its disk without a place to put an object of ours.
struct Plan
{
    std::atomic<int> untilFailure{0}; ///< operations, the failing one with them; 0: nothing fails
    std::atomic<Fault> fault{Fault::IoError};
    std::atomic<Lasting> lasting{Lasting::Once};
    std::atomic<bool> hasFailed{false};
    std::atomic<bool> isAsked{false}; ///< whether anybody ever used this disk
};

Plan &plan()
{
    static Plan plan;
    return plan;
}

/// What goes with the power; written while that is looked at.
UnsyncedWrites &unsynced()
{
    static UnsyncedWrites writes;
    return writes;
}

bool looksAtPower()
{
    return plan().fault == Fault::NoPower && (plan().untilFailure > 0 || plan().hasFailed);
}

bool isPowerGone()
{
    return plan().fault == Fault::NoPower && plan().hasFailed;
}

/// Counts one operation that these faults concern; true when it fails.
bool failsNow(std::initializer_list<Fault> concerned)
{
    Plan &now = plan();
    const Fault fault = now.fault;
    const bool isConcerned = std::find(concerned.begin(), concerned.end(), fault) != concerned.end();
    const int left = isConcerned ? now.untilFailure.load() : 0;
    if (left == 0) {
        return isPowerGone();
    }
    if (left > 1) {
        now.untilFailure = left - 1;
        return false;
    }
    now.hasFailed = true;
    now.untilFailure = now.lasting == Lasting::UntilMended ? 1 : 0;
    return true;
}

sqlite3_vfs *realDisk()
{
    static sqlite3_vfs *const real = sqlite3_vfs_find(nullptr);
    return real;
}

/// What SQLite keeps of an open file; the real one's lies right after it.
struct File
{
    sqlite3_file base;
    const char *path; ///< SQLite's, valid as long as the file is open; null for a file without a name
};

sqlite3_file *real(sqlite3_file *file)
{
    return reinterpret_cast<sqlite3_file *>(reinterpret_cast<File *>(file) + 1);
}

const sqlite3_io_methods *methodsOf(sqlite3_file *file)
{
    return real(file)->pMethods;
}

/// Where the power is looked at; empty for a file without a name, which nobody misses.
QString followedPath(sqlite3_file *file)
{
    const char *const path = reinterpret_cast<File *>(file)->path;
    return looksAtPower() && path != nullptr ? QFile::decodeName(path) : QString();
}

int readFile(sqlite3_file *file, void *to, int size, sqlite3_int64 from)
{
    return failsNow({Fault::Unread}) ? SQLITE_IOERR_READ : methodsOf(file)->xRead(real(file), to, size, from);
}

int writeFile(sqlite3_file *file, const void *bytes, int size, sqlite3_int64 to)
{
    if (failsNow({Fault::IsFull, Fault::IoError, Fault::NoPower})) {
        return plan().fault == Fault::IsFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    }
    if (const QString path = followedPath(file); !path.isEmpty()) {
        unsynced().write(path, QByteArray(static_cast<const char *>(bytes), size), to);
    }
    return methodsOf(file)->xWrite(real(file), bytes, size, to);
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    if (failsNow({Fault::IoError, Fault::NoPower})) {
        return SQLITE_IOERR_TRUNCATE;
    }
    if (const QString path = followedPath(file); !path.isEmpty()) {
        unsynced().truncate(path, size);
    }
    return methodsOf(file)->xTruncate(real(file), size);
}

/// To wait for the real disk would take most of a test's time.
int syncFile(sqlite3_file *file, int)
{
    if (failsNow({Fault::IoError, Fault::NoPower})) {
        return SQLITE_IOERR_FSYNC;
    }
    if (const QString path = followedPath(file); !path.isEmpty()) {
        unsynced().sync(path);
    }
    return SQLITE_OK;
}

int sizeOfFile(sqlite3_file *file, sqlite3_int64 *size)
{
    return failsNow({Fault::Unread}) ? SQLITE_IOERR_FSTAT : methodsOf(file)->xFileSize(real(file), size);
}

int lockFile(sqlite3_file *file, int lock)
{
    return failsNow({Fault::Unlocked}) ? SQLITE_IOERR_LOCK : methodsOf(file)->xLock(real(file), lock);
}

/// To let go never fails, as on a real disk.
int lockIndex(sqlite3_file *file, int first, int count, int flags)
{
    const bool locks = (flags & SQLITE_SHM_LOCK) != 0;
    return locks && failsNow({Fault::Unlocked}) ? SQLITE_IOERR_SHMLOCK
                                                : methodsOf(file)->xShmLock(real(file), first, count, flags);
}

/// No file is read through memory that is mapped to it: that cannot fail without the program's end.
int fetchNothing(sqlite3_file *, sqlite3_int64, int, void **bytes)
{
    *bytes = nullptr;
    return SQLITE_OK;
}

int mapIndex(sqlite3_file *file, int region, int size, int extends, void volatile **memory)
{
    if (extends != 0 && failsNow({Fault::IsFull, Fault::IoError})) {
        return SQLITE_IOERR_SHMSIZE;
    }
    return methodsOf(file)->xShmMap(real(file), region, size, extends, memory);
}

const sqlite3_io_methods *ourMethods()
{
    static const sqlite3_io_methods methods{
        3,
        [](sqlite3_file *file) { return methodsOf(file)->xClose(real(file)); },
        &readFile,
        &writeFile,
        &truncateFile,
        &syncFile,
        &sizeOfFile,
        &lockFile,
        [](sqlite3_file *file, int lock) { return methodsOf(file)->xUnlock(real(file), lock); },
        [](sqlite3_file *file, int *is) { return methodsOf(file)->xCheckReservedLock(real(file), is); },
        [](sqlite3_file *file, int code, void *what) {
            return methodsOf(file)->xFileControl(real(file), code, what);
        },
        [](sqlite3_file *file) { return methodsOf(file)->xSectorSize(real(file)); },
        [](sqlite3_file *file) { return methodsOf(file)->xDeviceCharacteristics(real(file)); },
        &mapIndex,
        &lockIndex,
        [](sqlite3_file *file) { methodsOf(file)->xShmBarrier(real(file)); },
        [](sqlite3_file *file, int deletes) { return methodsOf(file)->xShmUnmap(real(file), deletes); },
        &fetchNothing,
        [](sqlite3_file *, sqlite3_int64, void *) { return SQLITE_OK; },
    };
    return &methods;
}

int openFile(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *givenFlags)
{
    plan().isAsked = true;
    file->pMethods = nullptr;
    reinterpret_cast<File *>(file)->path = name;
    if ((flags & SQLITE_OPEN_CREATE) != 0 ? failsNow({Fault::IoError, Fault::NoPower}) : isPowerGone()) {
        return SQLITE_CANTOPEN;
    }
    if (const QString path = followedPath(file); !path.isEmpty()) {
        const bool isLog = (flags & (SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL)) != 0;
        unsynced().open(path, isLog ? UnsyncedWrites::Kind::Log : UnsyncedWrites::Kind::Other);
    }
    const int outcome = realDisk()->xOpen(realDisk(), name, real(file), flags, givenFlags);
    if (real(file)->pMethods != nullptr) {
        file->pMethods = ourMethods();
    }
    return outcome;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncsFolder)
{
    if (failsNow({Fault::IoError, Fault::NoPower})) {
        return SQLITE_IOERR_DELETE;
    }
    if (looksAtPower()) {
        unsynced().remove(QFile::decodeName(name), syncsFolder != 0);
    }
    return realDisk()->xDelete(realDisk(), name, syncsFolder);
}

int lookForFile(sqlite3_vfs *, const char *name, int flags, int *isThere)
{
    return failsNow({Fault::Unread}) ? SQLITE_IOERR_ACCESS
                                     : realDisk()->xAccess(realDisk(), name, flags, isThere);
}

/// Everything but files as the real disk does it.
sqlite3_vfs *ourDisk()
{
    static sqlite3_vfs disk = [] {
        sqlite3_vfs ours = *realDisk();
        ours.szOsFile += static_cast<int>(sizeof(File));
        ours.pNext = nullptr;
        ours.zName = "failing";
        ours.xOpen = &openFile;
        ours.xDelete = &deleteFile;
        ours.xAccess = &lookForFile;
        return ours;
    }();
    return &disk;
}

/// True when Qt's driver opens its files here.
bool isUsedByQt()
{
    const QTemporaryDir directory;
    Database(directory.filePath(QStringLiteral("any.db"))).run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    return plan().isAsked;
}

} // namespace

bool FailingDisk::install()
{
    static const bool isUsed = [] {
        realDisk();
        return sqlite3_vfs_register(ourDisk(), 1) == SQLITE_OK && isUsedByQt();
    }();
    return isUsed;
}

void FailingDisk::failAt(int operation, Fault fault, Lasting lasting)
{
    plan().fault = fault;
    plan().lasting = lasting;
    plan().hasFailed = false;
    unsynced().clear();
    plan().untilFailure = operation;
}

bool FailingDisk::hasFailed() const
{
    return plan().hasFailed;
}

void FailingDisk::mend()
{
    plan().untilFailure = 0;
    plan().fault = Fault::IoError;
}

void FailingDisk::returnPower(UnsyncedWrites::Survives survives, unsigned seed)
{
    unsynced().losePower(survives, seed);
    mend();
}

} // namespace TradeModule
