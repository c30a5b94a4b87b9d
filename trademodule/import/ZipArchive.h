#pragma once

#include <QIODevice>

struct zip;
struct zip_file;

namespace TradeModule {

/// A zip archive that is open for reading.
class ZipArchive
{
public:
    /// An Error when the file is no such archive.
    explicit ZipArchive(const QString &path);
    ~ZipArchive();
    Q_DISABLE_COPY_MOVE(ZipArchive)

    bool has(const QString &name) const;

private:
    friend class ZipEntry;
    zip *m_archive = nullptr;
};

/// One file of a zip archive, unpacked as it is read. Ends with an error, see isTooLarge(), when it holds
/// more than any statement: a small archive can unpack to any size.
class ZipEntry : public QIODevice
{
public:
    static constexpr qint64 mostBytes = qint64(1) << 30;

    /// The archive stays the caller's and outlives this object. An Error when it has no such file.
    ZipEntry(const ZipArchive &archive, const QString &name, qint64 most = mostBytes);
    ~ZipEntry() override;

    bool isSequential() const override { return true; }
    bool isTooLarge() const { return m_left < 0; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    zip_file *m_file = nullptr;
    qint64 m_left;
};

} // namespace TradeModule
