// Writes the tables of a page anew: write_message_page FILE
#include "tests/trading/MessagePage.h"

#include <QFile>

#include <cstdio>

int main(int argc, char **argv)
{
    QFile file(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (!file.open(QIODevice::ReadWrite)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
        return 1;
    }
    const QByteArray page = withMessageTables(file.readAll());
    if (page.isEmpty()) {
        std::fprintf(stderr, "%s: has no marks between which tables belong\n", qPrintable(file.fileName()));
        return 1;
    }
    return file.resize(0) && file.write(page) == page.size() ? 0 : 1;
}
