#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>
#include <memory>
#include <optional>

using Reports = QVector<QStringList>;

static CommandEnd endOf(Reports& reports)
{
    return CommandEnd([&reports](const QStringList& failures) { reports << failures; });
}

/// What is reported of an open handle that is used like this.
static Reports reportsOf(void (*use)(CommandEnd end))
{
    Reports reports;
    use(endOf(reports));
    return reports;
}

/// Commands: what they do to fields, and the one report of their end.
class TestCommandBook : public QObject
{
    Q_OBJECT

    std::optional<CommandBook> book_;

    /// Faults of the line as the command ExCmdZoomIn, whose end is left to the caller.
    QStringList run(const QString& line)
    {
        Reports reports;
        const FaultCollector faults;
        const bool left = book_->run(ExCmdZoomIn, CmdLine(line), endOf(reports)).isOpen();
        return left && reports.size() == 1 ? faults.faults() : QStringList("reported wrongly");
    }

private Q_SLOTS:
    void init() { book_.emplace(); }

    void eachWayToEndReportsOnce()
    {
        const Reports well({QStringList()}), letGo({QStringList(CommandEnd::letGo)});
        QCOMPARE(reportsOf([](CommandEnd end) { end.done(); }), well);
        QCOMPARE(reportsOf([](CommandEnd end) { end.leaveOpen(); }), Reports());
        QCOMPARE(reportsOf([](CommandEnd) {}), letGo);
        QCOMPARE(reportsOf([](CommandEnd end) { end = CommandEnd(); }), letGo);
        const auto hand = [](CommandEnd end) {
            CommandEnd last;
            last = CommandEnd(std::move(end));
            last.done();
        };
        QCOMPARE(reportsOf(hand), well);
    }

    void theReportMayDestroyTheHolderOrStartTheNext()
    {
        Reports reports;
        std::unique_ptr<std::pair<CommandEnd, QStringList>> holder;
        const auto report = [&](const QStringList& failures) {
            holder.reset();
            reports << failures;
        };
        holder.reset(new std::pair(CommandEnd(report), QStringList("a")));
        holder->first.failed(holder->second);
        QCOMPARE(reports, Reports({{"a"}}));
        CommandEnd end([&](const QStringList&) { end = endOf(reports); });
        end.done();
        QVERIFY(end.isOpen() && reports.size() == 1);
    }

    void fieldsTellTheEndOfAnEditOnce()
    {
        const auto told = [this](void (CommandBook::*row)(EX_CMD_ID, QLineEdit*),
                                 const char* line) {
            init();
            QLineEdit field;
            QStringList texts;
            connect(&field, &QLineEdit::editingFinished, [&] { texts << field.text(); });
            ((*book_).*row)(ExCmdZoomIn, &field);
            return run(line) + texts;
        };
        QCOMPARE(told(&CommandBook::whole, "zoom_in 007"), QStringList("7"));
        QCOMPARE(told(&CommandBook::number, "zoom_in 7.1234567"), QStringList("7.12346"));
        QCOMPARE(told(&CommandBook::text, "zoom_in \"7.50 eV\""), QStringList("7.50 eV"));
    }

    void switchesAndChoicesTakeOnlyTheValuesThatThereAre()
    {
        QCheckBox button;
        book_->onOff(ExCmdZoomIn, &button);
        for (const char* line : {"zoom_in 1", "zoom_in 2", "zoom_in on"})
            QVERIFY(run(line).isEmpty() && button.isChecked() == QString(line).endsWith('1'));
        init();
        QComboBox box;
        box.addItems({"K", "L3"});
        book_->choose(ExCmdZoomIn, &box, "edge");
        QVERIFY(run("zoom_in 1").isEmpty());
        QCOMPARE(run("zoom_in  2"), QStringList("No edge has the number 2: zoom_in 2"));
        QVERIFY(run("zoom_in -1").size() == 1 && box.currentText() == "L3");
    }

    void onlyALaterRowReportsItself()
    {
        QCOMPARE(run("zoom_in"), QStringList("Command not available in this version: zoom_in"));
        Reports reports;
        CommandEnd kept;
        book_->later(ExCmdZoomIn, [&](const CmdLine&, CommandEnd end) { kept = std::move(end); });
        QVERIFY(!book_->run(ExCmdZoomIn, CmdLine("zoom_in"), endOf(reports)).isOpen());
        QVERIFY(reports.isEmpty() && kept.isOpen());
    }
};

QTEST_MAIN(TestCommandBook)
#include "test_command_book.moc"
