// Announces itself on the bus of a directory until it is killed: announcement_host DIRECTORY
#include "endpoint/Announcement.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    LocalCommunication::Announcement announcement;
    QObject::connect(&announcement, &LocalCommunication::Announcement::kept, &announcement, [] {
        std::puts("kept");
        std::fflush(stdout);
    });
    announcement.start(QCoreApplication::arguments().at(1), {"Global", "Presence", "here", "gone"});
    return QCoreApplication::exec();
}
