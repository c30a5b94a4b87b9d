#include "terminal/data/FileStamp.h"

#include <QFileInfo>

namespace Terminal {

FileStamp FileStamp::of(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() ? FileStamp{true, file.size(), file.lastModified()} : FileStamp{};
}

} // namespace Terminal
