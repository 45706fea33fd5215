#include "display/WelcomePage.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

namespace {

constexpr int mostLinks = 5;
/// Wider lines are hard to read, and would tear the page apart on a large screen. [pixels]
constexpr int greatestWidth = 560;

QFont larger(QFont font, double factor)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(qRound(font.pixelSize() * factor));
    return font;
}

QLabel* wrapped(const QString& text)
{
    auto* const label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

QLabel* bold(const QString& text)
{
    QLabel* const label = wrapped(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLabel* newLink()
{
    auto* const link = new QLabel;
    link->setTextFormat(Qt::RichText);
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    link->setWordWrap(true);
    return link;
}

QPushButton* newButton(const QString& text, const char* name)
{
    auto* const button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true); // Enter presses it outside of dialogs too
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(text) + 32);
    return button;
}

} // namespace

WelcomePage::WelcomePage(QWidget* parent)
    : CoveringPage(parent)
    , session_(newLink())
    , recent_(new QWidget)
    , links_(new QVBoxLayout(recent_))
{
    auto* const content = new QWidget;
    content->setMaximumWidth(greatestWidth);
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(18, 24, 18, 18);
    layout->setSpacing(10);
    addHeading(layout);
    layout->addSpacing(14);
    addRoad(layout);
    layout->addSpacing(14);
    links_->setContentsMargins(0, 0, 0, 14);
    links_->setSpacing(6);
    recent_->hide();
    session_->hide();
    layout->addWidget(session_);
    layout->addWidget(recent_);
    addOthers(layout);
    layout->addStretch(1);

    auto* const middle = new QWidget;
    auto* const centred = new QHBoxLayout(middle);
    centred->setContentsMargins(0, 0, 0, 0);
    centred->addStretch(1);
    centred->addWidget(content, 1000);
    centred->addStretch(1);
    auto* const scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(middle);
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addWidget(scroll);
}

void WelcomePage::addHeading(QVBoxLayout* layout)
{
    QLabel* const heading = wrapped(tr("Drop a folder of images here"));
    heading->setFont(larger(heading->font(), 1.4));
    layout->addWidget(heading);
    QPushButton* const open = newButton(tr("Open Folder..."), "WelcomeOpenFolder");
    open->setDefault(true);
    open->setMinimumHeight(2 * open->fontMetrics().height());
    connect(open, &QPushButton::clicked, this, &WelcomePage::openFolder);
    layout->addWidget(open, 0, Qt::AlignLeft);
}

void WelcomePage::addRoad(QVBoxLayout* layout)
{
    const QStringList steps{tr("Load the images: I1 behind the sample and I0 without it, one of "
                               "each for every energy."),
                            tr("Look at a spectrum: move the mouse over the image."),
                            tr("Load the reference spectra and press Analyze: the maps show how "
                               "much of each is where.")};
    layout->addWidget(bold(tr("From images to maps")));
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    for (int i = 0; i < steps.size(); ++i) {
        grid->addWidget(bold(QString::number(i + 1)), i, 0, Qt::AlignTop);
        grid->addWidget(wrapped(steps.at(i)), i, 1);
    }
    layout->addLayout(grid);
}

void WelcomePage::addOthers(QVBoxLayout* layout)
{
    layout->addWidget(bold(tr("Or open files")));
    struct Button
    {
        QString text;
        const char* name;
        void (WelcomePage::*pressed)();
    };
    // One below the other: in some languages they are too wide for a row.
    for (const Button& button :
         {Button{tr("Open I1 Images..."), "WelcomeOpenI1", &WelcomePage::openI1},
          Button{tr("Open I0 Images..."), "WelcomeOpenI0", &WelcomePage::openI0},
          Button{tr("Open Batch File..."), "WelcomeOpenBatch", &WelcomePage::openBatch}}) {
        QPushButton* const widget = newButton(button.text, button.name);
        connect(widget, &QPushButton::clicked, this, button.pressed);
        layout->addWidget(widget, 0, Qt::AlignLeft);
    }
}

void WelcomePage::setLastSession(const QString& file)
{
    session_->setVisible(!file.isEmpty());
    disconnect(session_, &QLabel::linkActivated, this, nullptr);
    const QString shown = QDir::toNativeSeparators(file);
    const QString link = QStringLiteral("<a href=\"open\">%1</a> &nbsp; %2")
                             .arg(QFileInfo(file).fileName().toHtmlEscaped(),
                                  QFileInfo(shown).path().toHtmlEscaped());
    session_->setText(tr("Last session: %1").arg(link));
    session_->setToolTip(shown.toHtmlEscaped());
    connect(session_, &QLabel::linkActivated, this, [this, file] { Q_EMIT openSession(file); });
}

void WelcomePage::setRecentFolders(const QStringList& paths)
{
    qDeleteAll(recent_->findChildren<QLabel*>());
    recent_->setVisible(!paths.isEmpty());
    if (paths.isEmpty())
        return;
    links_->addWidget(bold(tr("Opened before")));
    for (const QString& path : paths.mid(0, mostLinks)) {
        const QString shown = QDir::toNativeSeparators(path);
        QLabel* const link = newLink();
        const QString text = QStringLiteral("<a href=\"open\">%1</a> &nbsp; %2");
        link->setText(text.arg(QDir(path).dirName().toHtmlEscaped(),
                               QFileInfo(shown).path().toHtmlEscaped()));
        link->setToolTip(shown.toHtmlEscaped());
        connect(link, &QLabel::linkActivated, this, [this, path] { Q_EMIT openRecent(path); });
        links_->addWidget(link);
    }
}
