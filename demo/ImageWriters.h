#pragma once

#include <QString>
#include <QVector>

/// The detector formats that an experiment can be written in.
enum class ImageFormat
{
    Tiff,
    Img16,
    Img32,
    Brnx
};

/// The format named on the command line ("tiff", "img16", "img32", "brnx"); false for another name.
bool imageFormatOf(const QString& name, ImageFormat* format);

/// File suffix of a format, without dot.
QString imageSuffix(ImageFormat format);

/// Writes counts (row after row, width*height values) as one image. False when the file can't be
/// written.
bool writeImage(ImageFormat format, const QString& fname, int width, int height,
                const QVector<quint16>& counts);
