#include "BodyFixture.h"
#include "app/Translation.h"
#include "display/FileDialogs.h"
#include "selection/SelectDataFiles.h"

#include "display/PanelDock.h"

#include <QAbstractButton>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QTranslator>

/// The interface in both languages, as the start makes it.
class TestTranslation : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // The size of letters on desktops; that of the offscreen platform is larger.
        QFont font = QApplication::font();
        font.setPointSize(9);
        QApplication::setFont(font);
    }

    void init() { japanese_ = std::make_unique<QTranslator>(); }
    void cleanup() { japanese_.reset(); }

    void captionsAreThoseOfTheLanguage_data()
    {
        QTest::addColumn<bool>("japanese");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("english") << false
                                 << QStringList{"Analyzer",          "I1 Data",
                                                "X ax.: keV",        "I1 Data: Energy of Files",
                                                "Any Files (* *.*)", "Cancel"};
        QTest::newRow("japanese") << true
                                  << QStringList{"解析",
                                                 "I1 データ",
                                                 "X 軸: keV",
                                                 "I1 データ: ファイルのエネルギー",
                                                 "すべてのファイル (* *.*)",
                                                 "キャンセル"};
    }

    /// One caption of each making: of a form, set in code, with a place holder, put together of
    /// two, a file pattern, and of Qt itself.
    void captionsAreThoseOfTheLanguage()
    {
        QFETCH(bool, japanese);
        QFETCH(QStringList, expected);
        QVERIFY(!japanese || installTranslation(*japanese_));
        DrivenBody body;
        QVERIFY(body.run("eng_calc_disp_unit_i1 1"));
        auto* row = body.findChild<SelectDataFiles*>("SelectI1Files");
        const QString captions[] = {
            body.findChild<QAbstractButton*>("ShowAnalyzer")->text(),
            row->findChild<QLabel*>("Caption")->text(),
            row->findChild<QLabel*>("XAxis")->text(),
            row->findChild<QWidget*>("EOFSetup")->windowTitle(),
            row->dialog()->get()->nameFilters().last(),
            row->dialog()->get()->labelText(QFileDialog::Reject).remove("&")};
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(captions[i], expected[i]);
    }

    void noCaptionIsCutOff_data()
    {
        QTest::addColumn<bool>("japanese");
        QTest::newRow("english") << false;
        QTest::newRow("japanese") << true;
    }

    /// On the smallest screen that the windows are made for.
    void noCaptionIsCutOff()
    {
        QFETCH(bool, japanese);
        QVERIFY(!japanese || installTranslation(*japanese_));
        DrivenBody body;
        const QSize screen(1280, 800);
        body.resize(screen);
        QStringList cut;
        body.show();
        QVERIFY(QTest::qWaitForWindowExposed(&body));
        for (QDockWidget* dock : body.findChildren<QDockWidget*>()) {
            if (auto* const panel = qobject_cast<PanelDock*>(dock))
                panel->bringUp();
            QCoreApplication::processEvents();
            if (body.width() > screen.width() || body.height() > screen.height())
                cut << "larger than the screen with " + dock->windowTitle();
            cut << cutCaptionsOf(body);
        }
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join("\n")));
    }

private:
    /// Captions of shown labels and buttons that are wider than what they stand on.
    static QStringList cutCaptionsOf(const QWidget& window)
    {
        QStringList cut;
        const auto check = [&cut](const QWidget* widget, const QString& text) {
            const int needed = widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
            if (widget->isVisible() && needed > widget->contentsRect().width())
                cut << widget->objectName() + ": " + text;
        };
        for (const auto* button : window.findChildren<QAbstractButton*>())
            check(button, button->text());
        for (const auto* label : window.findChildren<QLabel*>()) {
            if (!label->wordWrap())
                check(label, label->text());
            else if (label->isVisible() && label->heightForWidth(label->width()) > label->height())
                cut << label->objectName() + ": " + label->text();
        }
        return cut;
    }

    std::unique_ptr<QTranslator> japanese_;
};

QTEST_MAIN(TestTranslation)
#include "test_translation.moc"
