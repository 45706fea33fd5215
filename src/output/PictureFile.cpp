#include "output/PictureFile.h"

#include "common/Fault.h"
#include "common/SafeFile.h"
#include "common/TextItems.h"

#include <QFileInfo>
#include <QImageWriter>

bool savePicture(const QImage& picture, const QString& fname)
{
    if (picture.isNull()) {
        fault(QStringLiteral("No picture to save as %1").arg(quoted(fname)));
        return false;
    }
    return writeFile(fname, [&](QIODevice& file) {
        QImageWriter writer(&file, QFileInfo(fname).suffix().toLatin1());
        return writer.write(picture) ? QString() : writer.errorString();
    });
}
