#include "app/Windows.h"

#include "analysis/Analyzer.h"
#include "app/Messages.h"
#include "batch/BatchCtrl.h"
#include "calibration/CalibCtrl.h"
#include "display/XafsView.h"
#include "output/SaveDataCfg.h"

namespace {

std::unique_ptr<XafsView> newSpectrumWindow(const QString& name, const QString& title)
{
    auto view = std::make_unique<XafsView>();
    view->setObjectName(name);
    view->setWindowTitle(title);
    return view;
}

} // namespace

Windows::Windows()
    : batchCtrl(std::make_unique<BatchCtrl>())
    , analyzer(std::make_unique<Analyzer>())
    , xafsView(newSpectrumWindow(QStringLiteral("XafsView"), tr("Spectrum at the position")))
    , bgView(newSpectrumWindow(QStringLiteral("BGView"), tr("BG Specturm")))
    , calibCtrl(std::make_unique<CalibCtrl>())
    , saveDataCfg(std::make_unique<SaveDataCfg>())
    , messages(std::make_unique<Messages>())
{
    xafsView->show();
}

Windows::~Windows() = default;

QVector<QWidget*> Windows::all() const
{
    return {batchCtrl.get(), analyzer.get(),    xafsView.get(), bgView.get(),
            calibCtrl.get(), saveDataCfg.get(), messages.get()};
}
