// The commands of the panel, and what the history is told of its fields.
#include "batch/CommandArgs.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "registration/ImgProc.h"

#include <QCheckBox>

namespace {

constexpr int mostThousandths = 1000;

} // namespace

void ImgProc::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    book.action(ExCmdRegistrationThreshold, [this](const Cmd& c) {
        const int thousandths = intArg(c, 0);
        if (thousandths < 0 || thousandths > mostThousandths)
            fault(QStringLiteral("No threshold between 0 and 1000: ") + c.simplified);
        else
            setThreshold(thousandths);
    });
    book.history().follow(ExCmdRegistrationThreshold,
                          [this] { return QString::number(settings().thousandths); });
    book.action(ExCmdRegistrationView, [this](const Cmd& c) {
        const int view = intArg(c, 0);
        if (view < DataView || view > ComparedView)
            fault(QStringLiteral("No view has the number ") + c.arg(0));
        else
            setView(View(view));
    });
    book.history().follow(ExCmdRegistrationView, [this] { return QString::number(view()); });
    book.onOff(ExCmdRegistrationEdges, findChild<QCheckBox*>(QStringLiteral("EdgeDetect")));
    book.onOff(ExCmdRegistrationAutoSet, findChild<QCheckBox*>(QStringLiteral("ASetShift")));
    book.onOff(ExCmdRegistrationAutoEach, findChild<QCheckBox*>(QStringLiteral("AAutoShift")));
    book.action(ExCmdRegistrationAutoShift, [this](const Cmd&) { autoShiftBinImg(); });
}
