#include "common/TextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

QString decodeText(const QByteArray& bytes)
{
    QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForUtfText(bytes, utf8)
                       ->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        text = QString::fromLatin1(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QChar(0), QLatin1Char(' '));
    return text;
}

TextFileResult readTextFile(const QString& fileName, qint64 maxBytes, QString& text)
{
    // A pipe or a device may never end, and opening a pipe may never return.
    if (!QFileInfo(fileName).isFile())
        return TextFileResult::CantOpen;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return TextFileResult::CantOpen;
    if (file.size() > maxBytes)
        return TextFileResult::TooLong;
    // read() takes memory for what it is asked for; files of the system tell a size of 0.
    const qint64 expected = file.size() > 0 ? file.size() : maxBytes;
    const QByteArray bytes = file.read(expected + 1);
    if (bytes.size() > maxBytes)
        return TextFileResult::TooLong;
    text = decodeText(bytes);
    return TextFileResult::Ok;
}
