#include "batch/CommandTexts.h"

namespace {

constexpr bool atOnce = false;
constexpr bool later = true;

// clang-format off
constexpr CommandText texts[] = {
    {ExCmdScreenshot, "screenshot", "<window> <new file>", "Body window.png", atOnce,
     "Writes a picture of the window, or of a panel by its name or title"},
    {ExCmdCalibWait, "calib_wait", "", "", later,
     "Waits for the end of the calibration"},
    {ExCmdCalibNormalizeShift, "calib_normalize_shift", "", "", atOnce,
     "Takes the energy of the edge as the mean of the shift map"},
    {ExCmdCalibTargetBackground, "calib_target_background", "<int>", "1", atOnce,
     "Takes Victoreen lines for the images for 0, straight ones for 1"},
    {ExCmdCalibStdBackground, "calib_std_background", "<int>", "1", atOnce,
     "Takes Victoreen lines for the standard for 0, straight ones for 1"},
    {ExCmdCalibInnerRange, "calib_inner_range", "<double> <double> <double>", "10 0.5 0.01", atOnce,
     "Sets half range, step and finest step of the search for the shift [eV]"},
    {ExCmdCalibCrystal, "calib_crystal", "<int>", "0", atOnce,
     "Chooses the crystal by its place in the list"},
    {ExCmdCalibCheckSize, "calib_check_size", "<0|1>", "1", atOnce,
     "Refuses a shift map of another size than the images"},
    {ExCmdEngCrystalDI0, "eng_crystal_d_i0", "<double>", "3.13553", atOnce,
     "Sets the spacing of the crystal planes for I0 [angstrom]"},
    {ExCmdEngCrystalDI1, "eng_crystal_d_i1", "<double>", "3.13553", atOnce,
     "Sets the spacing of the crystal planes for I1 [angstrom]"},
    {ExCmdEngApplyI0, "eng_apply_i0", "", "", atOnce,
     "Works the energies of the loaded images of I0 out anew"},
    {ExCmdEngApplyI1, "eng_apply_i1", "", "", atOnce,
     "Works the energies of the loaded images of I1 out anew"},
    {ExCmdSuggestingThJump, "suggesting_th_jump", "<double>", "3", atOnce,
     "Takes a jump below this many times the noise of the lines as no edge"},
    {ExCmdHoldGap, "hold_gap", "<0|1>", "1", atOnce,
     "Holds the gap between lines that cross near the edge"},
    {ExCmdSuggestForRefs, "suggest_for_refs", "<0|1>", "1", atOnce,
     "Normalises references by the suggested edge too"},
    {ExCmdCalibStdHint, "calib_std_hint", "<0|1>", "1", atOnce,
     "Normalises the standard by the suggested edge too"},
    {ExCmdCalibFormerMap, "calib_former_map", "", "", atOnce,
     "Exchanges the shift map for the one before it"},
    {ExCmdAnalyzerZansaOwnWeights, "analyzer_zansa_own_weights", "<0|1>", "1", atOnce,
     "Works the residual of a position out with its own weights"},
    {ExCmdSaveDataCfgTiffClamp, "saveDataCfg_tiff_clamp", "<0|1>", "1", atOnce,
     "Holds TIFF values at the ends of the scale, rather than have them wrap"},
    {ExCmdSaveDataCfgSaveAsFloatTiff, "saveDataCfg_save_as_float_tiff", "", "", atOnce,
     "Saves maps as TIFF of floating-point numbers"},
    {ExCmdSaveAllData, "save_all_data", "<new file>", "maps/map.tif", atOnce,
     "Writes every finished map"},
    {ExCmdAnalyzerLCFRange, "analyzer_lcf_range", "<double> <double>", "8960 9020", atOnce,
     "Sets the range of the fits [eV]"},
    {ExCmdAnalyzerDEdgeMode, "analyzer_dedge_mode", "<0|1>", "0", atOnce,
     "Finds the edge by its mid point for 0, by comparison for 1"},
    {ExCmdAnalyzerDEdgeFile, "analyzer_dedge_file", "<file>", "references/foil.dat", atOnce,
     "Loads the comparison spectrum of the edge shift"},
    {ExCmdAnalyzerMap1Capture, "analyzer_map1_capture", "", "", atOnce,
     "Takes a copy of the map on show as operand 1"},
    {ExCmdAnalyzerMap1Load, "analyzer_map1_load", "<file>", "shift.emp", atOnce,
     "Loads a shift map as operand 1"},
    {ExCmdAnalyzerMap2Capture, "analyzer_map2_capture", "", "", atOnce,
     "Takes a copy of the map on show as operand 2"},
    {ExCmdAnalyzerMap2Load, "analyzer_map2_load", "<file>", "shift.emp", atOnce,
     "Loads a shift map as operand 2"},
    {ExCmdAnalyzerProcess, "analyzer_process", "<0|1|2>", "0", atOnce,
     "Subtracts operand 2 for 0, divides by it for 1, masks by it for 2"},
    {ExCmdAnalyzerDeglitch, "analyzer_deglitch", "<double> <double>", "3 0.1", atOnce,
     "Replaces outliers of the chosen map: by the factor and the ratio"},
    {ExCmdAnalyzerShowDeglitched, "analyzer_show_deglitched", "<0|1>", "1", atOnce,
     "Shows the chosen map deglitched, or as it was analysed"},
    {ExCmdAnalyzerLCFOld, "analyzer_lcf_old", "<0|1>", "0", atOnce,
     "Fits positions without an edge too"},
    {ExCmdAnalyzerSelectRow, "analyzer_select_row", "<int>", "4", atOnce,
     "Shows the map of a reference row, from 0"},
    {ExCmdAnalyzerShowOutcomes, "analyzer_show_outcomes", "", "", atOnce,
     "Shows what became of each position of the last walk"},
    {ExCmdExplainPosition, "explain_position", "<int x> <int y> <new file>", "90 110 why.txt", atOnce,
     "Writes all stages of a position as text"},
};
// clang-format on

} // namespace

QVector<ExCmdRow> extensionCommands()
{
    return commandRows(texts);
}
