#include "batch/CommandTable.h"

#include "batch/CmdLine.h"

#include <QHash>

namespace {

/// Row of each word, by the word in capitals; of equal words the first counts.
template<typename Row>
QHash<QString, int> indexOf(const QVector<Row>& table)
{
    QHash<QString, int> rows;
    for (int i = 0; i < table.size(); ++i) {
        const QString word = table[i].word.toUpper();
        if (!rows.contains(word))
            rows.insert(word, i);
    }
    return rows;
}

struct ExCmdText
{
    EX_CMD_ID id;
    const char* word;
    const char* arguments;
};

// clang-format off
constexpr ExCmdText exCmdTexts[] = {
    {ExCmdClearI1Files, "clear_I1_files", ""},
    {ExCmdClearI0Files, "clear_I0_files", ""},
    {ExCmdSetI1EnergyPattern, "set_i1_energy_pattern", "<text>"},
    {ExCmdSetI0EnergyPattern, "set_i0_energy_pattern", "<text>"},
    {ExCmdLoadI1Files, "load_I1_files", "<mode> <file>..."},
    {ExCmdLoadI0Files, "load_I0_files", "<mode> <file>..."},
    {ExCmdLoadI1FilesOfPattern, "load_I1_files_of_pattern", "<mode> <folder> <filter>..."},
    {ExCmdLoadI0FilesOfPattern, "load_I0_files_of_pattern", "<mode> <folder> <filter>..."},
    {ExCmdCutFI0, "cut_f_i0", "<int>"},
    {ExCmdCutFI1, "cut_f_i1", "<int>"},
    {ExCmdCutLI0, "cut_l_i0", "<int>"},
    {ExCmdCutLI1, "cut_l_i1", "<int>"},
    {ExCmdSkipI0, "skip_i0", "<int>"},
    {ExCmdSkipI1, "skip_i1", "<int>"},
    {ExCmdShowLatestI0, "show_latest_i0", "<0|1>"},
    {ExCmdShowLatestI1, "show_latest_i1", "<0|1>"},
    {ExCmdEngByNameI0, "eng_by_name_i0", ""},
    {ExCmdEngByNameI1, "eng_by_name_i1", ""},
    {ExCmdEngByNameRegExpI0, "eng_by_name_reg_exp_i0", "<text>"},
    {ExCmdEngByNameRegExpI1, "eng_by_name_reg_exp_i1", "<text>"},
    {ExCmdEngByNameFactorI0, "eng_by_name_factor_i0", "<double>"},
    {ExCmdEngByNameFactorI1, "eng_by_name_factor_i1", "<double>"},
    {ExCmdEngByCalcI0, "eng_by_calc_i0", "<0|1>"},
    {ExCmdEngByCalcI1, "eng_by_calc_i1", "<0|1>"},
    {ExCmdEngCalcBaseI0, "eng_calc_base_i0", "<double>"},
    {ExCmdEngCalcBaseI1, "eng_calc_base_i1", "<double>"},
    {ExCmdEngCalcDeltaI0, "eng_calc_delta_i0", "<double>"},
    {ExCmdEngCalcDeltaI1, "eng_calc_delta_i1", "<double>"},
    {ExCmdEngCalcEndI0, "eng_calc_end_i0", "<double>"},
    {ExCmdEngCalcEndI1, "eng_calc_end_i1", "<double>"},
    {ExCmdEngCalcNumI0, "eng_calc_num_i0", "<int>"},
    {ExCmdEngCalcNumI1, "eng_calc_num_i1", "<int>"},
    {ExCmdEngCalcEvenInEngI0, "eng_calc_even_in_eng_i0", "<0|1>"},
    {ExCmdEngCalcEvenInEngI1, "eng_calc_even_in_eng_i1", "<0|1>"},
    {ExCmdEngCalcEvenInDegI0, "eng_calc_even_in_deg_i0", "<0|1>"},
    {ExCmdEngCalcEvenInDegI1, "eng_calc_even_in_deg_i1", "<0|1>"},
    {ExCmdEngCalcDispUnitI0, "eng_calc_disp_unit_i0", "<int>"},
    {ExCmdEngCalcDispUnitI1, "eng_calc_disp_unit_i1", "<int>"},
    {ExCmdEngByRefI0, "eng_by_ref_i0", "<file>"},
    {ExCmdEngByRefI1, "eng_by_ref_i1", "<file>"},
    {ExCmdSetFluoType, "set_fluo_type", "<0|1>"},
    {ExCmdSetBandW, "set_band_w", "<int>"},
    {ExCmdSetBandH, "set_band_h", "<int>"},
    {ExCmdSelectDispImage, "select_disp_image", "<int>"},
    {ExCmdSeekImage, "seek_image", "<int>"},
    {ExCmdSaveImage, "save_image", "<file>"},
    {ExCmdSaveImageWNum, "save_image_w_num", "<file> <num>"},
    {ExCmdSaveAllImages, "save_all_images", "<file>"},
    {ExCmdSaveData, "save_data", "<file>"},
    {ExCmdSaveDataAsTiff, "save_data_as_tiff", "<file>"},
    {ExCmdMovePosition, "move_position", "<int x> <int y>"},
    {ExCmdSaveSpectra, "save_spectra", "<file>"},
    {ExCmdCbarSetRange, "cbar_set_range", "<double min> <double max>"},
    {ExCmdCbarSetAll, "cbar_set_all", ""},
    {ExCmdSelectRegion, "select_region", "<int x1> <int y1> <int x2> <int y2>"},
    {ExCmdScaleReset, "scale_reset", ""},
    {ExCmdZoomIn, "zoom_in", ""},
    {ExCmdXafsViewNormalize, "xafs_view_normalize", "<0|1>"},
    {ExCmdXafsViewEnergyCorrection, "xafs_view_enerugy_correction", "<0|1>"},
    {ExCmdAnalyzerShowWindow, "analyzer_show_window", ""},
    {ExCmdAnalyzerSetLCFStd, "analyzer_set_LCF_std", "<int row> <0|1 victoreen> <double dE> <file> [<use>]"},
    {ExCmdAnalyzerSetLCFMode, "analyzer_set_LCF_mode", "<0|1>"},
    {ExCmdAnalyzerExecLCF, "analyzer_exec_LCF", ""},
    {ExCmdAnalyzerSelectImage, "analyzer_select_image", "<int>"},
    {ExCmdAnalyzerSelectImageType, "analyzer_select_image_type", "<int>"},
    {ExCmdAnalyzerSetRaEnergy, "analyzer_set_ra_energy", "<double>"},
    {ExCmdAnalyzerSetRaFactor, "analyzer_set_ra_factor", "<double>"},
    {ExCmdAnalyzerExecRa, "analyzer_exec_ra", ""},
    {ExCmdAnalyzerSetFixedScale, "analyzer_set_fixed_scale", "<0|1>"},
    {ExCmdAnalyzerSetScaleMax, "analyzer_set_scale_max", "<double>"},
    {ExCmdAnalyzerSetScaleMin, "analyzer_set_scale_min", "<double>"},
    {ExCmdAnalyzerSetDMutScaleMax, "analyzer_set_dMut_scale_max", "<double>"},
    {ExCmdAnalyzerSetDMutScaleMin, "analyzer_set_dMut_scale_min", "<double>"},
    {ExCmdAnalyzerSetRatioScaleMax, "analyzer_set_ratio_scale_max", "<double>"},
    {ExCmdAnalyzerSetRatioScaleMin, "analyzer_set_ratio_scale_min", "<double>"},
    {ExCmdAnalyzerViewNormalize, "analyzer_view_normalize", "<0|1>"},
    {ExCmdAnalyzerViewEnergyCorrection, "analyzer_view_enerugy_correction", "<0|1>"},
    {ExCmdAnalyzerTargetElements, "analyzer_target_elements", "<text>"},
    {ExCmdAnalyzerSelectAnalysisMode, "analyzer_select_analysis_mode", "<int>"},
    {ExCmdAnalyzerElemsSelectTarget, "analyzer_elems_select_target", "<text>"},
    {ExCmdAnalyzerElemsSelectShow, "analyzer_elems_select_show", "<text>"},
    {ExCmdAnalyzerElemsSetDeVs, "analyzer_elems_set_deVs", "<double>"},
    {ExCmdAnalyzerElemsSetCorrTh, "analyzer_elems_set_corr_th", "<double>"},
    {ExCmdAnalyzerElemsSelectDispMode, "analyzer_elems_select_disp_mode", "<int>"},
    {ExCmdAnalyzerElemsSetUse, "analyzer_elems_set_use", "<elem> <0|1>"},
    {ExCmdAnalyzerElemsSortByAn, "analyzer_elems_sort_by_an", "<0|1>"},
    {ExCmdAnalyzerElemsRoi, "analyzer_elems_roi", "<elem> <double> <double>"},
    {ExCmdAnalyzerElemsThdmut, "analyzer_elems_thdmut", "<elem> <double>"},
    {ExCmdAnalyzerElemsNoNeg, "analyzer_elems_no_neg", "<elem> <0|1>"},
    {ExCmdAnalyzerElemsBgDMut, "analyzer_elems_bg_dMut", "<ignored> <double>"},
    {ExCmdAnalyzerElemsBgDMutR, "analyzer_elems_bg_dMutR", "<ignored> <double>"},
    {ExCmdAnalyzerElemsBgDE, "analyzer_elems_bg_dE", "<ignored> <double>"},
    {ExCmdAnalyzerElemsBgROI, "analyzer_elems_bg_ROI", "<ignored> <double>"},
    {ExCmdAnalyzerElemsBgNROI, "analyzer_elems_bg_NROI", "<ignored> <double>"},
    {ExCmdAnalyzerExecElems, "analyzer_exec_elems", ""},
    {ExCmdCalibShowWindow, "calib_show_window", ""},
    {ExCmdCalibLoadStd, "calib_load_std", "<file>"},
    {ExCmdCalibSetEdgeEV, "calib_set_edge_eV", "<text>"},
    {ExCmdCalibExec, "calib_exec", ""},
    {ExCmdCalibLoadMap, "calib_load_map", "<file>"},
    {ExCmdCalibClearMap, "calib_clear_map", ""},
    {ExCmdCalibSaveMap, "calib_save_map", "<file>"},
    {ExCmdCalibType, "calib_type", "<int>"},
    {ExCmdSaveDataCfgShowWindow, "saveDataCfg_show_window", ""},
    {ExCmdSaveDataCfgSaveAsTiff, "saveDataCfg_save_as_tiff", ""},
    {ExCmdSaveDataCfgSaveAsText, "saveDataCfg_save_as_text", ""},
    {ExCmdSaveDataCfgTiffFixScale, "saveDataCfg_tiff_fix_scale", "<0|1>"},
    {ExCmdSaveDataCfgTiffScaleMin, "saveDataCfg_tiff_scale_min", "<double>"},
    {ExCmdSaveDataCfgTiffScaleMax, "saveDataCfg_tiff_scale_max", "<double>"},
    {ExCmdSaveDataCfgTiffAsAnalyzed, "saveDataCfg_tiff_as_analyzed", "<0|1>"},
    {ExCmdSaveDataCfgTextAsCsv, "saveDataCfg_text_as_csv", ""},
    {ExCmdSaveDataCfgTextAsSsv, "saveDataCfg_text_as_ssv", ""},
    {ExCmdSaveDataCfgTextAsXyz, "saveDataCfg_text_as_xyz", ""},
    {ExCmdSaveDataCfgTextAsVals, "saveDataCfg_text_as_vals", ""},
    {ExCmdQuit, "quit", ""},
    {ExCmdUseI0, "Use_I0", "<0|1>"},
    {ExCmdSuggestElm, "Suggest_Elm", "<0|1>"},
    {ExCmdSuggestingElm, "Suggesting_Elm", "<text>"},
    {ExCmdSuggestingEdge, "Suggesting_Edge", "<int>"},
    {ExCmdSuggestingEdgeEV, "Suggesting_Edge_eV", "<text>"},
    {ExCmdSuggestingPreEndEV, "Suggesting_Pre_End_eV", "<text>"},
    {ExCmdSuggestingPostStartEV, "Suggesting_Post_Start_eV", "<text>"},
    {ExCmdSetI0DarkArea, "set_i0_dark_area", ""},
    {ExCmdSetI1DarkArea, "set_i1_dark_area", ""},
    {ExCmdClearI0DarkArea, "clear_i0_dark_area", ""},
    {ExCmdClearI1DarkArea, "clear_i1_dark_area", ""},
    {ExCmdNone, "not ex cmd", ""},
};

constexpr ExCmdText extensionTexts[] = {
    {ExCmdScreenshot, "screenshot", "<window> <file>"},
    {ExCmdCalibWait, "calib_wait", ""},
    {ExCmdCalibNormalizeShift, "calib_normalize_shift", ""},
    {ExCmdCalibTargetBackground, "calib_target_background", "<int>"},
    {ExCmdCalibStdBackground, "calib_std_background", "<int>"},
    {ExCmdCalibInnerRange, "calib_inner_range", "<double> <double> <double>"},
    {ExCmdCalibCrystal, "calib_crystal", "<int>"},
    {ExCmdCalibCheckSize, "calib_check_size", "<0|1>"},
    {ExCmdEngCrystalDI0, "eng_crystal_d_i0", "<double>"},
    {ExCmdEngCrystalDI1, "eng_crystal_d_i1", "<double>"},
    {ExCmdEngApplyI0, "eng_apply_i0", ""},
    {ExCmdEngApplyI1, "eng_apply_i1", ""},
    {ExCmdSuggestingThJump, "suggesting_th_jump", "<double>"},
    {ExCmdHoldGap, "hold_gap", "<0|1>"},
    {ExCmdSuggestForRefs, "suggest_for_refs", "<0|1>"},
    {ExCmdCalibStdHint, "calib_std_hint", "<0|1>"},
    {ExCmdCalibFormerMap, "calib_former_map", ""},
    {ExCmdAnalyzerZansaOwnWeights, "analyzer_zansa_own_weights", "<0|1>"},
    {ExCmdSaveDataCfgTiffClamp, "saveDataCfg_tiff_clamp", "<0|1>"},
    {ExCmdSaveDataCfgSaveAsFloatTiff, "saveDataCfg_save_as_float_tiff", ""},
    {ExCmdSaveAllData, "save_all_data", "<file>"},
    {ExCmdAnalyzerLCFRange, "analyzer_lcf_range", "<double> <double>"},
    {ExCmdAnalyzerDEdgeMode, "analyzer_dedge_mode", "<0|1>"},
    {ExCmdAnalyzerDEdgeFile, "analyzer_dedge_file", "<file>"},
    {ExCmdAnalyzerMap1Capture, "analyzer_map1_capture", ""},
    {ExCmdAnalyzerMap1Load, "analyzer_map1_load", "<file>"},
    {ExCmdAnalyzerMap2Capture, "analyzer_map2_capture", ""},
    {ExCmdAnalyzerMap2Load, "analyzer_map2_load", "<file>"},
    {ExCmdAnalyzerProcess, "analyzer_process", "<0|1|2>"},
    {ExCmdAnalyzerDeglitch, "analyzer_deglitch", "<double> <double>"},
    {ExCmdAnalyzerShowDeglitched, "analyzer_show_deglitched", "<0|1>"},
    {ExCmdAnalyzerLCFOld, "analyzer_lcf_old", "<0|1>"},
    {ExCmdAnalyzerSelectRow, "analyzer_select_row", "<int>"},
    {ExCmdAnalyzerShowOutcomes, "analyzer_show_outcomes", ""},
    {ExCmdExplainPosition, "explain_position", "<int x> <int y> <file>"},
};
// clang-format on

template<size_t N>
QVector<ExCmdRow> makeTable(const ExCmdText (&texts)[N])
{
    QVector<ExCmdRow> table;
    for (const ExCmdText& text : texts)
        table.append({text.id, QLatin1String(text.word), QLatin1String(text.arguments)});
    return table;
}

} // namespace

const QVector<KeywordRow>& keywordTable()
{
    static const QVector<KeywordRow> table = {
        {KeywordFor, QStringLiteral(":for")},
        {KeywordNext, QStringLiteral(":next")},
        {KeywordEcho, QStringLiteral(":echo")},
        {KeywordRemStart, QStringLiteral(":rem_start")},
        {KeywordRemEnd, QStringLiteral(":rem_end")},
        {KeywordEnd, QStringLiteral(":end")},
        {KeywordLet, QStringLiteral(":let")},
    };
    return table;
}

const QVector<ExCmdRow>& exCmdTable()
{
    static const QVector<ExCmdRow> table = makeTable(exCmdTexts);
    return table;
}

const QVector<ExCmdRow>& extensionTable()
{
    static const QVector<ExCmdRow> table = makeTable(extensionTexts);
    return table;
}

BatchKeyword keywordId(const CmdLine& line)
{
    static const QHash<QString, int> rows = indexOf(keywordTable());
    const int row = rows.value(line.word.toUpper(), -1);
    return row < 0 ? KeywordNone : keywordTable()[row].id;
}

EX_CMD_ID exCmdId(const CmdLine& line)
{
    // The extensions stand last: a word of the old table keeps its meaning.
    static const QVector<ExCmdRow> all = exCmdTable() + extensionTable();
    static const QHash<QString, int> rows = indexOf(all);
    const int row = rows.value(line.word.toUpper(), -1);
    return row < 0 ? ExCmdNone : all[row].id;
}

bool isKeyword(const CmdLine& line)
{
    return keywordId(line) != KeywordNone;
}

bool isExCmd(const CmdLine& line)
{
    return exCmdId(line) != ExCmdNone;
}

QString exCmdName(int id)
{
    for (const QVector<ExCmdRow>* table : {&exCmdTable(), &extensionTable()}) {
        for (const ExCmdRow& row : *table) {
            if (row.id == id)
                return row.word;
        }
    }
    return QStringLiteral("UnKnow ExCMD id");
}
