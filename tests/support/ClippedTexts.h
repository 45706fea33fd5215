#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyleOptionFrame>
#include <QStyleOptionGroupBox>

// Finds texts of a panel that don't have the room that they need. Texts that are left out in part
// on purpose count only when they hold a number with a unit.

namespace clipped {

inline bool hasNumberWithUnit(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\d\\s*\\[?(eV|keV|ms|pix|pixels|deg|%|angstrom)"));
    return pattern.match(text).hasMatch();
}

/// Width that the field's text has. [pixels]
inline int roomOf(const QLineEdit& field)
{
    constexpr int besideText = 2 * 2 + 1; // kept free by the field, and the cursor
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    return field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width() -
           besideText;
}

inline bool isClipped(const QLabel& label)
{
    const QRect room = label.contentsRect();
    if (label.wordWrap())
        return label.heightForWidth(label.width()) > label.height() ||
               label.minimumSizeHint().width() > label.width();
    const QString text = label.text();
    if (!label.inherits("ElidedLabel") || hasNumberWithUnit(text))
        return label.fontMetrics().size(0, text).width() > room.width() ||
               label.fontMetrics().height() > label.height();
    return false;
}

inline bool isClipped(const QAbstractButton& button)
{
    constexpr int frame = 8; // of push buttons; the style asks for far more
    if (button.text().isEmpty())
        return false;
    const bool push = qobject_cast<const QPushButton*>(&button);
    const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    const int needed = push ? text.width() + frame : button.sizeHint().width();
    return needed > button.width() || text.height() > button.height();
}

inline bool isClipped(const QLineEdit& field)
{
    bool number = false;
    field.text().toDouble(&number);
    const bool counts = number || hasNumberWithUnit(field.text());
    return field.fontMetrics().height() > field.height() ||
           (counts && field.fontMetrics().horizontalAdvance(field.text()) > roomOf(field));
}

inline bool isClipped(const QGroupBox& box)
{
    return box.fontMetrics().horizontalAdvance(box.title()) > box.width();
}

inline bool isClipped(const QComboBox& choice)
{
    return hasNumberWithUnit(choice.currentText()) && choice.sizeHint().width() > choice.width();
}

/// Whether a part of the widget stands outside one that holds it, sideways.
inline bool isCutBy(const QWidget& widget, const QWidget& root)
{
    for (const QWidget* p = &widget; p != &root; p = p->parentWidget()) {
        const QRect place = p->geometry();
        if (place.left() < 0 || place.right() >= p->parentWidget()->width())
            return true;
    }
    return false;
}

template<typename Widget>
void collect(const QWidget& root, QStringList& texts)
{
    for (const Widget* widget : root.findChildren<Widget*>()) {
        const bool inner = widget->objectName().startsWith(QLatin1String("qt_"));
        if (!inner && widget->isVisibleTo(&root) && (isClipped(*widget) || isCutBy(*widget, root)))
            texts.append(QStringLiteral("%1 (%2 x %3): %4")
                             .arg(widget->objectName())
                             .arg(widget->width())
                             .arg(widget->height())
                             .arg(widget->property("text").toString()));
    }
}

} // namespace clipped

/// The visible texts within a laid out panel that are clipped, each with its widget's name.
inline QStringList clippedTexts(const QWidget* root)
{
    QStringList texts;
    clipped::collect<QLabel>(*root, texts);
    clipped::collect<QAbstractButton>(*root, texts);
    clipped::collect<QLineEdit>(*root, texts);
    clipped::collect<QGroupBox>(*root, texts);
    clipped::collect<QComboBox>(*root, texts);
    return texts;
}
