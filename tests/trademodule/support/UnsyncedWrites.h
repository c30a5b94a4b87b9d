#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>
#include <random>
#include <vector>

namespace TradeModule {

/// What of some files would be gone with the power: what was written since a file was last waited for, and
/// names that were made or removed since their folder was. The files themselves are written at once, so that
/// everybody reads them; it is losePower() that puts back what a disk may have.
class UnsyncedWrites
{
public:
    enum class Survives {
        Nothing,    ///< what nobody waited for is gone
        Everything, ///< the disk was quicker than it said
        SomeOfIt,   ///< each write, and each part of one, or none of it
    };
    enum class Kind {
        Log, ///< a new one, when it is waited for, brings its folder to the disk, too
        Other,
    };

    /// Forgets all files.
    void clear() { m_files.clear(); }

    /// To be told before it is opened, and made where it is not there.
    void open(const QString &path, Kind kind);
    void write(const QString &path, const QByteArray &bytes, qint64 place);
    void truncate(const QString &path, qint64 size);
    /// The file was waited for.
    void sync(const QString &path);
    void remove(const QString &path, bool isFolderSynced);

    /// The files as they are found when the power is there again. Nobody may have them open.
    void losePower(Survives survives, unsigned seed);

private:
    struct Write
    {
        qint64 place;
        QByteArray bytes; ///< none: what is beyond the place is cut off
    };
    struct File
    {
        std::optional<QByteArray>
            formerly;         ///< what the folder on the disk has under its name, unless it is this one
        bool isNamed = false; ///< by the folder on the disk
        bool isThere = false;
        bool bringsFolder = false;
        QByteArray synced;
        std::vector<Write> writes; ///< since then
    };

    void syncFolder();

    QMap<QString, File> m_files;
};

} // namespace TradeModule
