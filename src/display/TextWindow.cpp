#include "display/TextWindow.h"

#include "common/FileNames.h"
#include "common/SafeFile.h"
#include "display/FileDialogs.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize firstSize(760, 560); ///< the table of an explained position without scrolling

} // namespace

TextWindow::TextWindow(const QString& objectName, QWidget* parent)
    : QDialog(parent)
    , text_(new QPlainTextEdit)
    , saveDialog_(new LateDialog(
          [this] {
              auto* const dialog = new FileDialog(this);
              dialog->setAcceptMode(QFileDialog::AcceptSave);
              dialog->setNameFilters({tr("Text Files (*.txt)"), tr("Any Files (* *.*)")});
              dialog->setDefaultSuffix(QStringLiteral("txt"));
              return dialog;
          },
          this))
{
    setObjectName(objectName);
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* const copyAll = buttons->addButton(tr("Copy"), QDialogButtonBox::ActionRole);
    QPushButton* const save = buttons->addButton(tr("Save..."), QDialogButtonBox::ActionRole);
    connect(copyAll, &QPushButton::clicked, this, &TextWindow::copy);
    connect(save, &QPushButton::clicked, saveDialog_, &LateDialog::show);
    connect(saveDialog_, &LateDialog::fileSelected, this, [this](const QString& file) {
        writeFile(withExtension(file, QStringLiteral("txt")), text_->toPlainText().toUtf8());
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::hide);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    layout->addWidget(buttons);
    resize(firstSize);
}

void TextWindow::showText(const QString& title, const QString& text)
{
    setWindowTitle(title);
    text_->setPlainText(text);
    show();
    raise();
    activateWindow();
}

void TextWindow::copy() const
{
    QGuiApplication::clipboard()->setText(text_->toPlainText());
}
