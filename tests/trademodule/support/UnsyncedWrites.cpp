#include "tests/trademodule/support/UnsyncedWrites.h"

#include <QFile>

namespace TradeModule {

namespace {

/// What a disk writes as a whole.
constexpr int sectorSize = 512;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(QByteArray *content, qint64 place, const QByteArray &bytes)
{
    const int end = static_cast<int>(place) + bytes.size();
    if (content->size() < end) {
        content->append(QByteArray(end - content->size(), '\0'));
    }
    content->replace(static_cast<int>(place), bytes.size(), bytes);
}

void cut(QByteArray *content, qint64 size)
{
    if (content->size() > size) {
        content->truncate(static_cast<int>(size));
    }
}

/// Which of two things became of something that nobody waited for.
class Chance
{
public:
    Chance(UnsyncedWrites::Survives survives, unsigned seed) : m_survives(survives), m_random(seed) {}

    bool survives()
    {
        switch (m_survives) {
        case UnsyncedWrites::Survives::Nothing:
            return false;
        case UnsyncedWrites::Survives::Everything:
            return true;
        case UnsyncedWrites::Survives::SomeOfIt:
            return std::bernoulli_distribution()(m_random);
        }
        Q_UNREACHABLE();
    }

private:
    const UnsyncedWrites::Survives m_survives;
    std::mt19937 m_random;
};

void replace(const QString &path, const std::optional<QByteArray> &content)
{
    QFile file(path);
    if (!content) {
        file.remove();
    } else if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(*content);
    }
}

} // namespace

void UnsyncedWrites::open(const QString &path, Kind kind)
{
    const bool isKnown = m_files.contains(path);
    File &file = m_files[path];
    if (file.isThere) {
        return;
    }
    if (!isKnown && QFile::exists(path)) {
        file.isNamed = true;
        file.synced = contentOf(path);
    } else {
        file.synced.clear();
        file.bringsFolder = kind == Kind::Log;
    }
    file.writes.clear();
    file.isThere = true;
}

void UnsyncedWrites::write(const QString &path, const QByteArray &bytes, qint64 place)
{
    m_files[path].writes.push_back({place, bytes});
}

void UnsyncedWrites::truncate(const QString &path, qint64 size)
{
    m_files[path].writes.push_back({size, {}});
}

void UnsyncedWrites::sync(const QString &path)
{
    File &file = m_files[path];
    for (const Write &write : file.writes) {
        write.bytes.isEmpty() ? cut(&file.synced, write.place) : put(&file.synced, write.place, write.bytes);
    }
    file.writes.clear();
    if (file.bringsFolder) {
        file.bringsFolder = false;
        syncFolder();
    }
}

void UnsyncedWrites::remove(const QString &path, bool isFolderSynced)
{
    File &file = m_files[path];
    if (file.isNamed) {
        file.formerly = file.synced;
    }
    file.isNamed = false;
    file.isThere = false;
    if (isFolderSynced) {
        syncFolder();
    }
}

void UnsyncedWrites::syncFolder()
{
    for (File &file : m_files) {
        file.isNamed = file.isThere;
        file.formerly.reset();
    }
}

void UnsyncedWrites::losePower(Survives survives, unsigned seed)
{
    Chance chance(survives, seed);
    for (auto found = m_files.begin(); found != m_files.end(); ++found) {
        const File &file = found.value();
        QByteArray content = file.synced;
        for (const Write &write : file.writes) {
            if (write.bytes.isEmpty() && chance.survives()) {
                cut(&content, write.place);
            }
            for (int from = 0; from < write.bytes.size(); from += sectorSize) {
                if (chance.survives()) {
                    put(&content, write.place + from, write.bytes.mid(from, sectorSize));
                }
            }
        }
        const bool isNew = file.isNamed || chance.survives();
        const std::optional<QByteArray> own = file.isThere ? std::optional(content) : std::nullopt;
        replace(found.key(), isNew ? own : file.formerly);
        QFile::remove(found.key() + QStringLiteral("-shm")); // it was in memory
    }
    m_files.clear();
}

} // namespace TradeModule
