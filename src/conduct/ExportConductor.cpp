#include "conduct/ExportConductor.h"

#include "analysis/diagnostics/FourierWalk.h"
#include "batch/CmdLine.h"
#include "batch/CommandBook.h"
#include "common/Fault.h"
#include "common/Log.h"
#include "common/TextItems.h"
#include "conduct/SourceReader.h"
#include "conduct/StackConductor.h"
#include "conduct/StopReason.h"
#include "display/FileDialogs.h"
#include "display/RunRow.h"
#include "image/Measurement.h"
#include "output/SaveBox.h"

#include <QDebug>

#include <algorithm>
#include <optional>
#include <utility>

/// What is under way.
struct ExportConductor::Run
{
    QString name;                                     ///< in faults
    std::vector<std::shared_ptr<SpectrumFile>> files; ///< none of a Fourier analysis
    std::optional<FourierSums> sums;                  ///< of a Fourier analysis
    RunRow* row = nullptr;
    CommandEnd end; ///< of the command that started it

    /// Ends what is not whole yet; false when all files are, though nobody was told.
    bool cancelled() const
    {
        bool any = files.empty();
        for (const auto& file : files)
            any = file->cancel() || any;
        return any;
    }

    QStringList faults() const
    {
        QStringList texts;
        for (const auto& file : files) {
            if (file->hasFailed())
                texts << QStringLiteral("Can't write %1: %2")
                             .arg(quoted(file->name()), file->reason());
        }
        return texts;
    }
};

ExportConductor::ExportConductor(const Parts& parts, StackConductor& stacks, WalkConductor& walks,
                                 QWidget& window)
    : parts_(parts)
    , walks_(walks)
    , dialog_(newDialog(window))
{
    connectRows();
    connect(&parts_.saveBox, &SaveBox::formsChanged, this, &ExportConductor::tellReadiness);
    for (const auto signal : {&StackConductor::cleared, &StackConductor::loaded})
        connect(&stacks, signal, this, &ExportConductor::tellReadiness);
    connect(&stacks, &StackConductor::imageCame, this, &ExportConductor::tellReadiness);
    tellReadiness();
}

ExportConductor::~ExportConductor()
{
    stop();
}

LateDialog* ExportConductor::newDialog(QWidget& window)
{
    const auto make = [&window] {
        auto* dialog = new FileDialog(&window);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setNameFilters({tr("Data File (*.dat)"), tr("Any Files (* *.*)")});
        dialog->setDefaultSuffix(QStringLiteral("dat"));
        return dialog;
    };
    auto* const dialog = new LateDialog(make, &window);
    dialog->setTitle(tr("Save Each Spectrum"));
    connect(dialog, &LateDialog::fileSelected, this, [this](const QString& file) {
        note(ExCmdExportSpectra, {file});
        saveEachSpectrum(file);
    });
    return dialog;
}

void ExportConductor::connectRows()
{
    connect(&parts_.saveBox.spectraRow(), &RunRow::pressed, this, [this] {
        if (run_)
            stop();
        else
            dialog_->show();
    });
    connect(&parts_.saveBox.fourierRow(), &RunRow::pressed, this, [this] {
        if (run_) {
            stop();
            return;
        }
        note(ExCmdFourierAnalysis);
        execFourierA();
    });
}

void ExportConductor::bindCommands(CommandBook& book)
{
    using Cmd = CmdLine;
    history_ = &book.history();
    parts_.saveBox.bindCommands(book);
    book.later(ExCmdExportSpectra, [this](const Cmd& c, CommandEnd end) {
        exportForms(parts_.saveBox.chosenForms(), c.arg(0), std::move(end));
    });
    book.later(ExCmdFourierAnalysis,
               [this](const Cmd&, CommandEnd end) { startFourier(std::move(end)); });
}

/// Tells the history what the user does, behind what has brought it about.
void ExportConductor::note(EX_CMD_ID id, const QStringList& arguments)
{
    if (!history_)
        return;
    history_->settle();
    history_->add(id, arguments);
}

void ExportConductor::saveEachSpectrum(const QString& fname)
{
    exportForms(parts_.saveBox.chosenForms(), fname, {});
}

void ExportConductor::saveEachNormalizedXafsSpectrum(const QString& fname)
{
    exportForms({SpectrumForm::Normalized}, fname, {});
}

void ExportConductor::saveEachRawXafsSpectrum(const QString& fname)
{
    exportForms({SpectrumForm::RawXafs}, fname, {});
}

void ExportConductor::saveEachRawSpectrum(const QString& fname)
{
    exportForms({SpectrumForm::Raw}, fname, {});
}

/// Fills area with the walk over the selected one; why nothing can start, or an empty text.
QString ExportConductor::startFault(AnalyzeCond& area) const
{
    return run_ ? run_->name + QStringLiteral(" still runs") : parts_.reader.areaFault(area);
}

void ExportConductor::exportForms(const QVector<SpectrumForm>& forms, const QString& fname,
                                  CommandEnd end)
{
    AnalyzeCond area;
    QString why = startFault(area);
    if (why.isEmpty() && forms.isEmpty())
        why = QStringLiteral("none of \"Normalized XAFS\", \"Raw XAFS\" and \"Raw\" is checked");
    if (why.isEmpty() && fname.isEmpty())
        why = QStringLiteral("no name is given");
    if (!why.isEmpty()) {
        fault(QStringLiteral("Spectra not saved: ") + why);
        end.done();
        return;
    }
    WalkOrder order{parts_.reader.frozen(), area, {}};
    auto run = std::make_unique<Run>();
    run->name = QStringLiteral("The export of spectra");
    if (openFiles(forms, fname, area, order, *run))
        begin(std::move(run), std::move(order), parts_.saveBox.spectraRow(), std::move(end));
    else
        end.done();
}

/// False, with a fault line, when one of the files can't be opened; then none is left.
bool ExportConductor::openFiles(const QVector<SpectrumForm>& forms, const QString& fname,
                                const AnalyzeCond& area, WalkOrder& order, Run& run) const
{
    for (const SpectrumForm form : forms) {
        const QString name = spectrumFileName(fname, form, forms.size() > 1);
        const auto file = std::make_shared<SpectrumFile>(name, spectrumHeader(form, area),
                                                         qint64(area.columns()) * area.rows());
        if (file->hasFailed()) {
            fault(QStringLiteral("Can't open %1: %2").arg(quoted(name), file->reason()));
            return false;
        }
        run.files.push_back(file);
        order.jobs.push_back(
            {std::make_unique<SpectrumTextKernel>(form), std::make_unique<SpectrumTextSink>(file)});
    }
    return true;
}

void ExportConductor::execFourierA()
{
    startFourier({});
}

void ExportConductor::startFourier(CommandEnd end)
{
    AnalyzeCond area;
    const QString why = startFault(area);
    if (!why.isEmpty()) {
        fault(QStringLiteral("Fourier analysis not started: ") + why);
        end.done();
        return;
    }
    logTime(QStringLiteral("2da FA 1:"));
    WalkOrder order{parts_.reader.frozenForCounts(), area, {}};
    const int images = order.source->i1.size();
    auto run = std::make_unique<Run>();
    run->name = QStringLiteral("The Fourier analysis");
    run->sums.emplace(images);
    order.jobs.push_back(
        {std::make_unique<FourierKernel>(images), std::make_unique<FourierSink>(*run->sums)});
    begin(std::move(run), std::move(order), parts_.saveBox.fourierRow(), std::move(end));
}

void ExportConductor::begin(std::unique_ptr<Run> run, WalkOrder order, RunRow& row, CommandEnd end)
{
    run_ = std::move(run);
    run_->row = &row;
    run_->end = std::move(end);
    row.setRunning(true);
    row.setProgress(0.0);
    Q_EMIT runningChanged(true);
    tellReadiness();
    walks_.run(WalkConductor::Export, std::move(order),
               {[this](const WalkRun& taken) { positionsTaken(taken); }, [this] { finish(); },
                [this](const QString& what) {
                    qDebug().noquote() << run_->name << stopReason(what);
                    leave({stopReason(what)});
                }});
}

void ExportConductor::positionsTaken(const WalkRun& taken)
{
    const bool failed = std::any_of(run_->files.begin(), run_->files.end(),
                                    [](const auto& file) { return file->hasFailed(); });
    if (failed) {
        walks_.stop(WalkConductor::Export);
        finish();
        return;
    }
    const double percent = taken.behind().progress();
    run_->row->setDone(percent);
    if (taken.first.newLine) {
        run_->row->setProgress(percent);
        if (!run_->files.empty())
            qDebug() << "Save Xafs Spectra : Progress" << taken.first.progress();
    }
    Q_EMIT progressed(percent);
}

void ExportConductor::finish()
{
    const QStringList faults = run_->faults();
    for (const QString& text : faults)
        fault(text);
    if (faults.isEmpty()) {
        if (run_->sums)
            run_->sums->log();
        for (const auto& file : run_->files)
            Q_EMIT saved(file->name());
    }
    leave(faults);
}

void ExportConductor::stop()
{
    if (!run_)
        return;
    walks_.stop(WalkConductor::Export);
    if (!run_->cancelled()) {
        finish();
        return;
    }
    qDebug().noquote() << run_->name << stopReason();
    leave({stopReason()});
}

/// The run is over; nothing of it is written any more.
void ExportConductor::leave(const QStringList& faults)
{
    const std::unique_ptr<Run> run = std::move(run_);
    run->cancelled();
    run->row->setRunning(false);
    tellReadiness();
    Q_EMIT runningChanged(false);
    run->end.failed(faults);
}

void ExportConductor::tellReadiness()
{
    QString reason;
    if (parts_.data.i1.images.isEmpty())
        reason = tr("No images: load them in step 1");
    SaveBox& box = parts_.saveBox;
    box.fourierRow().setReadiness(reason, {});
    if (reason.isEmpty() && box.chosenForms().isEmpty())
        reason = tr("Check what is to be written of each point");
    box.spectraRow().setReadiness(reason, {});
    box.fourierRow().setHeldBack(run_ && run_->row != &box.fourierRow());
    box.spectraRow().setHeldBack(run_ && run_->row != &box.spectraRow());
}
