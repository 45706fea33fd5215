#pragma once

#include <QImage>
#include <QString>

/// Saves a picture in the format of the name's extension, at that format's own quality. False, with
/// one fault line, when there is no picture or the file can not be written; then nothing is left
/// under the name, or what stood there before.
bool savePicture(const QImage& picture, const QString& fname);
