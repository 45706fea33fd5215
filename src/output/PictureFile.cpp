#include "output/PictureFile.h"

#include "common/SaveFile.h"

#include <QDebug>
#include <QFileInfo>
#include <QImageWriter>

bool savePicture(const QImage& picture, const QString& fname)
{
    if (picture.isNull()) {
        qDebug() << "No picture to save as" << fname;
        return false;
    }
    QSaveFile file(fname);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug() << "Can't save picture" << fname << ":" << file.errorString();
        return false;
    }
    QImageWriter writer(&file, QFileInfo(fname).suffix().toLatin1());
    if (!writer.write(picture)) {
        qDebug() << "Can't save picture" << fname << ":" << writer.errorString();
        return false;
    }
    if (!commitWritten(file)) {
        qDebug() << "Can't save picture" << fname << ":" << file.errorString();
        return false;
    }
    return true;
}
