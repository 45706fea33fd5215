#include "app/Panels.h"

#include "analysis/Analyzer.h"
#include "analysis/diagnostics/Analyzer2.h"
#include "app/Messages.h"
#include "batch/BatchCtrl.h"
#include "batch/HistoryPanel.h"
#include "calibration/CalibCtrl.h"
#include "display/ImageBox.h"
#include "display/XafsView.h"
#include "output/SaveBox.h"
#include "output/SaveDataCfg.h"
#include "registration/ImgProc.h"
#include "selection/DataBox.h"
#include "selection/SpectrumBox.h"

namespace {

template<typename Panel>
std::unique_ptr<Panel> named(const QString& name)
{
    auto panel = std::make_unique<Panel>();
    panel->setObjectName(name);
    return panel;
}

std::unique_ptr<XafsView> newSpectrumView(const QString& name, const QString& title)
{
    auto view = named<XafsView>(name);
    view->setWindowTitle(title);
    return view;
}

} // namespace

Panels::Panels(MapBook& book)
    : imageBox(named<ImageBox>(QStringLiteral("ImageGroup")))
    , dataBox(named<DataBox>(QStringLiteral("DataGroup")))
    , spectrumBox(named<SpectrumBox>(QStringLiteral("SpectrumGroup")))
    , calibCtrl(std::make_unique<CalibCtrl>())
    , analyzer(std::make_unique<Analyzer>(book))
    , analyzer2(std::make_unique<Analyzer2>())
    , saveBox(named<SaveBox>(QStringLiteral("SaveGroup")))
    , saveDataCfg(std::make_unique<SaveDataCfg>())
    , xafsView(newSpectrumView(QStringLiteral("XafsView"), tr("Spectrum at the position")))
    , bgView(newSpectrumView(QStringLiteral("BGView"), tr("BG Specturm")))
    , imgProc(std::make_unique<ImgProc>())
    , batchCtrl(std::make_unique<BatchCtrl>())
    , messages(std::make_unique<Messages>())
    , history(std::make_unique<HistoryPanel>())
{
    bgView->setEmptyText(tr("No background spectrum: load one in step 1"));
}

Panels::~Panels() = default;

QVector<QWidget*> Panels::all() const
{
    return {batchCtrl.get(), analyzer.get(),  analyzer->view(),  xafsView.get(),
            bgView.get(),    calibCtrl.get(), saveDataCfg.get(), imgProc.get(),
            messages.get(),  history.get(),   analyzer2.get()};
}
