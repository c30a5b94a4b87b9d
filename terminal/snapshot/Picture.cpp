#include "terminal/snapshot/Picture.h"

#include <QCoreApplication>
#include <QImageWriter>
#include <QPixmap>
#include <QWidget>

namespace Terminal {

QString writePicture(QWidget *window, const QString &path)
{
    QImageWriter writer(path, "png");
    if (writer.write(window->grab().toImage())) {
        return {};
    }
    return QCoreApplication::translate("Picture", "%1: cannot be written: %2")
        .arg(path, writer.errorString());
}

} // namespace Terminal
