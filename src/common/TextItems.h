#pragma once

#include <QString>
#include <QStringList>

// The line splitter of configuration files, batch texts, bad-pixel lists and image headers.
// White space between items is the ASCII one: an ideographic blank belongs to the item. Items are
// never escaped: there is no way to write a quote inside a quoted item.

/// The text before the first "#" that stands outside quotes; what follows the "#" goes to
/// `comment` (empty when there is none). Double and single quotes toggle one common quote state.
QString stripComment(const QString& line, QString& comment);
QString stripComment(const QString& line);

/// True if nothing but blanks is left of the line without its comment.
bool isBlank(const QString& line);

/// Splits off the first item into `item` and returns the rest of the line. An item in double
/// quotes may hold blanks and loses its quotes; a quote that is not closed takes the rest of the
/// line and is logged. A line without an item gives two empty texts.
QString nextItem(const QString& line, QString& item);

/// All items of the line in order; empty ones ("") are dropped.
QStringList splitItems(const QString& line);

/// The items behind `prefix`; none when the line does not begin with it.
QStringList itemsAfter(const QString& line, const QString& prefix);

/// True if the line begins with `prefix` and has at least `minCount` items behind it. `list` gets
/// the items behind the prefix in any case.
bool startsWithItems(const QString& line, QStringList& list, int minCount, const QString& prefix);

/// The text in double quotes, with each quote in it written as \".
QString quoted(const QString& text);

/// A comma, then quoted(text).
QString commaQuoted(const QString& text);

/// Each item in double quotes with one blank between them; runs of white space become one blank.
QString quoteList(const QStringList& list);

/// Splits off one comma-separated field into `field` and returns the line behind its comma, empty
/// after the last field. In a quoted field a pair of double quotes stands for one.
QString csvField(const QString& line, QString& field);

/// The text as a field that csvField() reads back: quoted when it holds a quote or a comma.
QString csvQuoted(const QString& text);

/// Puts "," between the groups of three digits in front of the decimal point ("1234.5" gives
/// "1,234.5"); signs and other characters are left alone.
QString groupThousands(const QString& digits);

/// n blanks, at least none and at most 256.
QString spaces(int n);

/// The text filled up on its right with blanks to n places; longer texts stay.
QString padded(const QString& text, int n);
