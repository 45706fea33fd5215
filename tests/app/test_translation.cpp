#include "BodyFixture.h"
#include "app/Translation.h"
#include "display/FileDialogs.h"
#include "selection/SelectDataFiles.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QTranslator>

/// The interface in both languages, as the start makes it.
class TestTranslation : public QObject
{
    Q_OBJECT
private Q_SLOTS:
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

private:
    std::unique_ptr<QTranslator> japanese_;
};

QTEST_MAIN(TestTranslation)
#include "test_translation.moc"
