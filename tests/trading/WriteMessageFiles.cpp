// Writes anew what is made from the table of messages: write_message_files TREE
#include "tests/trading/MessageFiles.h"

#include <QDir>

#include <cstdio>

int main(int argc, char **argv)
{
    const QDir tree(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    const auto files = messageFiles(tree.path());
    for (auto file = files.begin(); file != files.end(); ++file) {
        QFile out(tree.filePath(file.key()));
        if (file->isEmpty() || !QDir().mkpath(QFileInfo(out).path()) ||
            !out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(*file) != file->size()) {
            std::fprintf(stderr, "%s cannot be made: %s\n", qPrintable(out.fileName()),
                         qPrintable(file->isEmpty()
                                        ? QStringLiteral("there are no marks between which tables belong")
                                        : out.errorString()));
            return 1;
        }
    }
    return 0;
}
