#include "terminal/intake/IntakeFile.h"

#include "terminal/data/BarHeader.h"
#include "trading/DecodedText.h"

#include <QCoreApplication>
#include <QFile>

namespace Terminal {

namespace {

/// More than any title and header need.
constexpr int beginning = 64 * 1024;

/// The beginning of a file in UTF-8, up to the end of a line; empty where it is no text.
QByteArray beginningOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray bytes = file.read(beginning);
    if (bytes.size() == beginning) {
        const bool isWide = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
        const int end = bytes.lastIndexOf('\n'); // the last character may be cut in two
        bytes.truncate(end < 0 ? bytes.size() : isWide ? end - end % 2 : end);
    }
    const auto text = Trading::decodedText(bytes);
    return text ? text->toUtf8() : QByteArray();
}

} // namespace

FileKind kindOfFile(const QString &path)
{
    const QByteArray text = beginningOf(path);
    std::string_view rest(text.constData(), static_cast<std::size_t>(text.size()));
    return !rest.empty() && takeBarHeader(&rest).columns.count() > 0 ? FileKind::BarTable
                                                                     : FileKind::Statement;
}

QString stateText(IntakeFile::State state)
{
    const auto text = [](const char *source) { return QCoreApplication::translate("IntakeFile", source); };
    switch (state) {
    case IntakeFile::State::Waiting:
        return text("waits");
    case IntakeFile::State::Looking:
        return text("is read");
    case IntakeFile::State::Ready:
        return text("ready");
    case IntakeFile::State::Refused:
        return text("needs you");
    case IntakeFile::State::LeftOut:
        return text("left out");
    case IntakeFile::State::Writing:
        return text("is imported");
    case IntakeFile::State::TakenIn:
        return text("imported");
    case IntakeFile::State::TakenBack:
        return text("taken back");
    case IntakeFile::State::Failed:
        return text("not imported");
    case IntakeFile::State::Stuck:
        return text("still there");
    case IntakeFile::State::Unknown:
        return text("not known");
    }
    return {};
}

} // namespace Terminal
