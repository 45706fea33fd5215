#include "app/BodyCommands.h"

#include "analysis/Analyzer.h"
#include "app/Screenshot.h"
#include "calibration/CalibCtrl.h"
#include "display/XafsView.h"
#include "output/SaveDataCfg.h"

#include <QDebug>

namespace {

/// The optional use argument of a reference: on unless it is a number not above zero or a word.
bool usesReference(const QString& arg)
{
    return arg.isEmpty() || arg.toUpper() == QLatin1String("VIC") || arg.toDouble() > 0.0;
}

} // namespace

void Body::Commands::setReference(Body& b, const CmdLine& c)
{
    b.analyzer_->setLCFStd(intArg(c, 0), usesReference(c.arg(4)), doubleArg(c, 2), c.arg(3),
                           onArg(c, 1) ? QStringLiteral("1") : QStringLiteral("0"));
}

/// The analysis panel and its walk.
QVector<Body::Commands::Entry> Body::Commands::analyzerCommands()
{
    return {
        {ExCmdAnalyzerShowWindow, [](B& b, const C&) { b.analyzer_->show(); }},
        {ExCmdAnalyzerSetLCFStd, setReference},
        {ExCmdAnalyzerExecLCF, [](B& b, const C& c) { b.startWalk(c.ticket); }, Later},
        {ExCmdAnalyzerSelectImage,
         [](B& b, const C& c) { b.analyzer_->selectImageById(intArg(c, 0)); }},
        {ExCmdAnalyzerSelectImageType,
         [](B& b, const C& c) {
             qDebug() << "Selecting img Type" << intArg(c, 0);
             b.analyzer_->setMapKind(intArg(c, 0));
         }},
        {ExCmdAnalyzerSetFixedScale,
         [](B& b, const C& c) { b.analyzer_->setFixedScale(onArg(c, 0)); }},
        {ExCmdAnalyzerSetScaleMax,
         [](B& b, const C& c) {
             b.analyzer_->setDMutScaleMax(doubleArg(c, 0));
             b.analyzer_->setRatioScaleMax(doubleArg(c, 0));
         }},
        {ExCmdAnalyzerSetScaleMin,
         [](B& b, const C& c) {
             b.analyzer_->setDMutScaleMin(doubleArg(c, 0));
             b.analyzer_->setRatioScaleMin(doubleArg(c, 0));
         }},
        {ExCmdAnalyzerSetDMutScaleMax,
         [](B& b, const C& c) { b.analyzer_->setDMutScaleMax(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetDMutScaleMin,
         [](B& b, const C& c) { b.analyzer_->setDMutScaleMin(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetRatioScaleMax,
         [](B& b, const C& c) { b.analyzer_->setRatioScaleMax(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSetRatioScaleMin,
         [](B& b, const C& c) { b.analyzer_->setRatioScaleMin(doubleArg(c, 0)); }},
        {ExCmdAnalyzerSelectAnalysisMode,
         [](B& b, const C& c) { b.analyzer_->setMode(intArg(c, 0)); }},
        {ExCmdAnalyzerZansaOwnWeights,
         [](B& b, const C& c) { b.analyzer_->setOwnWeights(onArg(c, 0)); }},
        {ExCmdAnalyzerViewNormalize,
         [](B& b, const C& c) { b.analyzer_->setNormalize(onArg(c, 0)); }},
        {ExCmdAnalyzerViewEnergyCorrection,
         [](B& b, const C& c) { b.analyzer_->setEnergyCorrection(onArg(c, 0)); }},
    };
}

/// The calibration and its map.
QVector<Body::Commands::Entry> Body::Commands::calibrationCommands()
{
    return {
        {ExCmdCalibShowWindow, [](B& b, const C&) { b.calibCtrl_->show(); }},
        {ExCmdCalibLoadStd, [](B& b, const C& c) { b.calibCtrl_->loadStd(c.arg(0)); }},
        {ExCmdCalibSetEdgeEV, [](B& b, const C& c) { b.calibCtrl_->setEdgeEV(c.arg(0)); }},
        // The calibration goes on behind the reported end; calib_wait waits for it.
        {ExCmdCalibExec, [](B& b, const C&) { b.startCalibration(); }},
        {ExCmdCalibLoadMap,
         [](B& b, const C& c) {
             EMPHeader header;
             b.loadMap(c.arg(0), b.energyShiftMap_, header, c.ticket);
         },
         Later},
        {ExCmdCalibClearMap, [](B& b, const C&) { b.clearShiftMap(); }},
        {ExCmdCalibSaveMap, [](B& b, const C& c) { b.saveEMap(c.arg(0)); }},
        {ExCmdCalibType, [](B& b, const C& c) { b.calibCtrl_->setType(intArg(c, 0)); }},
        {ExCmdCalibWait, [](B& b, const C& c) { b.waitForCalibration(c.ticket); }, Later},
        {ExCmdCalibNormalizeShift, [](B& b, const C&) { b.normalizeEShift(); }},
        {ExCmdCalibTargetBackground,
         [](B& b, const C& c) { b.calibCtrl_->setTargetBackground(intArg(c, 0)); }},
        {ExCmdCalibStdBackground,
         [](B& b, const C& c) { b.calibCtrl_->setStdBackground(intArg(c, 0)); }},
        {ExCmdCalibInnerRange,
         [](B& b, const C& c) {
             b.calibCtrl_->setInnerRange(doubleArg(c, 0), doubleArg(c, 1), doubleArg(c, 2));
         }},
        {ExCmdCalibCrystal, [](B& b, const C& c) { b.calibCtrl_->setCrystal(intArg(c, 0)); }},
        {ExCmdCalibStdHint, [](B& b, const C& c) { b.calibCtrl_->setUseHint(onArg(c, 0)); }},
        {ExCmdCalibFormerMap, [](B& b, const C&) { b.swapFormerMap(); }},
        {ExCmdCalibCheckSize, [](B& b, const C& c) { b.calibCtrl_->setCheckSize(onArg(c, 0)); }},
    };
}

/// Saving of pictures, spectra and maps, and the end of the program.
QVector<Body::Commands::Entry> Body::Commands::savingCommands()
{
    return {
        {ExCmdSaveImage, [](B& b, const C& c) { b.saveImage(c.arg(0)); }},
        {ExCmdSaveImageWNum, [](B& b, const C& c) { b.saveImageWNum(c.arg(0), c.arg(1)); }},
        {ExCmdSaveAllImages, [](B& b, const C& c) { b.saveAllImages(c.arg(0)); }},
        {ExCmdSaveSpectra, [](B& b, const C& c) { b.xafsView_->saveData(c.arg(0)); }},
        {ExCmdScreenshot, [](B&, const C& c) { saveScreenshot(c.arg(0), c.arg(1)); }},
        {ExCmdSaveData, [](B& b, const C& c) { b.saveData(c.arg(0)); }},
        {ExCmdSaveAllData, [](B& b, const C& c) { b.saveAllData(c.arg(0)); }},
        {ExCmdSaveDataAsTiff,
         [](B& b, const C& c) { b.saveDataAsTiff(c.arg(0), b.analyzer_->firstUsedRow()); }},
        {ExCmdSaveDataCfgShowWindow, [](B& b, const C&) { b.saveDataCfg_->show(); }},
        {ExCmdSaveDataCfgSaveAsTiff,
         [](B& b, const C&) {
             qDebug() << "setting save as tiff";
             b.saveDataCfg_->setSaveAsTiff();
         }},
        {ExCmdSaveDataCfgSaveAsText,
         [](B& b, const C&) {
             qDebug() << "setting save as text";
             b.saveDataCfg_->setSaveAsText();
         }},
        {ExCmdSaveDataCfgTiffFixScale,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleFixed(onArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffScaleMin,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleMin(doubleArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffScaleMax,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffScaleMax(doubleArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffAsAnalyzed,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffAsAnalyzed(onArg(c, 0)); }},
        {ExCmdSaveDataCfgTiffClamp,
         [](B& b, const C& c) { b.saveDataCfg_->setSaveTiffClamp(onArg(c, 0)); }},
        {ExCmdSaveDataCfgSaveAsFloatTiff,
         [](B& b, const C&) { b.saveDataCfg_->setSaveAsFloatTiff(); }},
        {ExCmdSaveDataCfgTextAsCsv, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsCSV(); }},
        {ExCmdSaveDataCfgTextAsSsv, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsSSV(); }},
        {ExCmdSaveDataCfgTextAsXyz, [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsXYVal(); }},
        {ExCmdSaveDataCfgTextAsVals,
         [](B& b, const C&) { b.saveDataCfg_->setSaveTextAsValValVal(); }},
        // Nobody reports the end: the program ends.
        {ExCmdQuit, [](B& b, const C&) { Q_EMIT b.finishing(); }, Later},
    };
}
