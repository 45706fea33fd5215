#include "analysis/elements/AElemsConds.h"
#include "analysis/elements/ElemCtrl.h"
#include "analysis/elements/ElementsSection.h"
#include "batch/BatchLine.h"
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "batch/CommandTable.h"
#include "common/Fault.h"
#include "common/FieldText.h"
#include "display/NumberFields.h"

#include <QAbstractButton>
#include <QLineEdit>

#include <algorithm>

void ElementsSection::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdAnalyzerTargetElements,
                [this](const Cmd& c) { setTargetElements(c.args.join(QLatin1Char(' '))); });
    book.action(ExCmdAnalyzerElemsSetDeVs, [this](const Cmd& c) {
        for (ElemCtrl* row : qAsConst(elems_))
            row->setPrePostDE(doubleArg(c, 0));
    });
    book.action(ExCmdAnalyzerElemsSetCorrTh, [this](const Cmd& c) { setCorTh(doubleArg(c, 0)); });
    book.action(ExCmdAnalyzerElemsSetStd, [this](const Cmd&) { setElemsStd(); });
    book.action(ExCmdAnalyzerElemsRecalcCor, [this](const Cmd&) { askedRecalc(); });
    bindFields(book);
    book.action(ExCmdAnalyzerElemsSelectDispMode,
                [this](const Cmd& c) { selectImage(intArg(c, 0)); });
    bindRowCommands(book);
    bindBackgroundCommands(book);
    tellHistory(book.history());
}

void ElementsSection::tellHistory(History& history)
{
    history.follow(ExCmdAnalyzerTargetElements,
                   [this] { return listed_.section(QLatin1Char('\n'), 0, 0); });
    history.follow([this] {
        QStringList lines;
        for (const ElemCtrl* row : qAsConst(elems_))
            lines += row->conditionLines();
        if (!elems_.isEmpty()) {
            lines << batchLine(ExCmdAnalyzerElemsSelectTarget,
                               {elems_.at(elementConditions().target)->name()})
                  << batchLine(ExCmdAnalyzerElemsSelectShow, {elems_.at(elementRow())->name()});
        }
        return lines;
    });
    history.follow(ExCmdAnalyzerElemsSetCorrTh, [this] { return shortestText(corTh_); });
}

/// Acts on the first row that the word means; none is a fault.
void ElementsSection::withRow(const QString& word, const std::function<void(ElemCtrl&)>& act) const
{
    const auto named = std::find_if(elems_.begin(), elems_.end(),
                                    [&word](const ElemCtrl* row) { return row->isNamed(word); });
    if (named == elems_.end())
        fault(QStringLiteral("No element row has the name \"%1\"").arg(word));
    else
        act(**named);
}

void ElementsSection::bindRowCommands(CommandBook& book)
{
    const auto bind = [&](EX_CMD_ID id, void (*act)(ElemCtrl&, const CmdLine&)) {
        book.action(id, [this, act](const CmdLine& c) {
            withRow(c.arg(0), [&](ElemCtrl& row) { act(row, c); });
        });
    };
    using Cmd = CmdLine;
    using Row = ElemCtrl;
    bind(ExCmdAnalyzerElemsSetUse, [](Row& row, const Cmd& c) { row.setUse(onArg(c, 1)); });
    bind(ExCmdAnalyzerElemsNoNeg, [](Row& row, const Cmd& c) { row.setNoNeg(onArg(c, 1)); });
    bind(ExCmdAnalyzerElemsThdmut,
         [](Row& row, const Cmd& c) { row.setThreshold(doubleArg(c, 1)); });
    bind(ExCmdAnalyzerElemsEnter, [](Row& row, const Cmd& c) { row.enter(c.arg(1), c.arg(2)); });
    bind(ExCmdAnalyzerElemsRoi,
         [](Row& row, const Cmd& c) { row.setRoi(doubleArg(c, 1), doubleArg(c, 2)); });
    book.action(ExCmdAnalyzerElemsSelectTarget, [this](const Cmd& c) {
        withRow(c.arg(0), [this](Row& row) {
            row.targetButton()->setChecked(true);
            Q_EMIT changedSelection();
        });
    });
    book.action(ExCmdAnalyzerElemsSelectShow, [this](const Cmd& c) {
        withRow(c.arg(0), [this](Row& row) {
            row.showButton()->setChecked(true);
            Q_EMIT changedSelection();
        });
    });
}

/// The value stands second; what stands first is not read.
void ElementsSection::bindBackgroundCommands(CommandBook& book)
{
    constexpr std::pair<EX_CMD_ID, AElemsConds::Field> fields[] = {
        {ExCmdAnalyzerElemsBgDMut, AElemsConds::DMut},
        {ExCmdAnalyzerElemsBgDMutR, AElemsConds::DMutR},
        {ExCmdAnalyzerElemsBgDE, AElemsConds::DE},
        {ExCmdAnalyzerElemsBgROI, AElemsConds::ROI},
        {ExCmdAnalyzerElemsBgNROI, AElemsConds::NROI}};
    for (const auto& known : fields) {
        book.action(known.first, [this, field = known.second](const CmdLine& c) {
            backgrounds().setValue(field, doubleArg(c, 1));
        });
        book.enterable(known.first, backgrounds().field(known.second));
        book.history().follow([id = known.first, field = backgrounds().field(known.second)] {
            // What stands first is not read, but has to stand there.
            const QString text = field->text();
            return QStringList(fieldText(fieldValue(field)) == text
                                   ? batchLine(id, {QStringLiteral("x"), text})
                                   : batchLine(ExCmdEnter, {exCmdName(id), text}));
        });
    }
}
