#include "tests/trademodule/support/FailingDisk.h"

#include "trademodule/ledger/Database.h"

#include <QTemporaryDir>

#include <sqlite3.h>

#include <atomic>

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

/// Counts one operation that such a fault concerns; true when it fails.
bool failsNow(Fault fault)
{
    Plan &now = plan();
    const int left = now.fault == fault ? now.untilFailure.load() : 0;
    if (left == 0) {
        return false;
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
};

sqlite3_file *real(sqlite3_file *file)
{
    return reinterpret_cast<sqlite3_file *>(reinterpret_cast<File *>(file) + 1);
}

const sqlite3_io_methods *methodsOf(sqlite3_file *file)
{
    return real(file)->pMethods;
}

int readFile(sqlite3_file *file, void *to, int size, sqlite3_int64 from)
{
    return failsNow(Fault::Unread) ? SQLITE_IOERR_READ : methodsOf(file)->xRead(real(file), to, size, from);
}

int writeFile(sqlite3_file *file, const void *bytes, int size, sqlite3_int64 to)
{
    if (failsNow(Fault::IsFull)) {
        return SQLITE_FULL;
    }
    return failsNow(Fault::IoError) ? SQLITE_IOERR_WRITE
                                    : methodsOf(file)->xWrite(real(file), bytes, size, to);
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    return failsNow(Fault::IoError) ? SQLITE_IOERR_TRUNCATE : methodsOf(file)->xTruncate(real(file), size);
}

/// To wait for the real disk would take most of a test's time, and nobody looks after a loss of power.
int syncFile(sqlite3_file *, int)
{
    return failsNow(Fault::IoError) ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}

/// No file is read through memory that is mapped to it: that cannot fail without the program's end.
int fetchNothing(sqlite3_file *, sqlite3_int64, int, void **bytes)
{
    *bytes = nullptr;
    return SQLITE_OK;
}

int mapIndex(sqlite3_file *file, int region, int size, int extends, void volatile **memory)
{
    if (extends != 0 && (failsNow(Fault::IsFull) || failsNow(Fault::IoError))) {
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
        [](sqlite3_file *file, sqlite3_int64 *size) { return methodsOf(file)->xFileSize(real(file), size); },
        [](sqlite3_file *file, int lock) { return methodsOf(file)->xLock(real(file), lock); },
        [](sqlite3_file *file, int lock) { return methodsOf(file)->xUnlock(real(file), lock); },
        [](sqlite3_file *file, int *is) { return methodsOf(file)->xCheckReservedLock(real(file), is); },
        [](sqlite3_file *file, int code, void *what) {
            return methodsOf(file)->xFileControl(real(file), code, what);
        },
        [](sqlite3_file *file) { return methodsOf(file)->xSectorSize(real(file)); },
        [](sqlite3_file *file) { return methodsOf(file)->xDeviceCharacteristics(real(file)); },
        &mapIndex,
        [](sqlite3_file *file, int first, int count, int flags) {
            return methodsOf(file)->xShmLock(real(file), first, count, flags);
        },
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
    if ((flags & SQLITE_OPEN_CREATE) != 0 && failsNow(Fault::IoError)) {
        return SQLITE_CANTOPEN;
    }
    const int outcome = realDisk()->xOpen(realDisk(), name, real(file), flags, givenFlags);
    if (real(file)->pMethods != nullptr) {
        file->pMethods = ourMethods();
    }
    return outcome;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncsFolder)
{
    return failsNow(Fault::IoError) ? SQLITE_IOERR_DELETE
                                    : realDisk()->xDelete(realDisk(), name, syncsFolder);
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
    plan().untilFailure = operation;
}

bool FailingDisk::hasFailed() const
{
    return plan().hasFailed;
}

void FailingDisk::mend()
{
    plan().untilFailure = 0;
}

} // namespace TradeModule
