#include "BatchText.h"

#include "DemoFiles.h"

namespace {
/// The program's stack that a stack's images go to, as commands name it: the standard takes the
/// sample's place.
QString placeOf(Stack stack)
{
    return demoFiles::stackName(stack == Stack::I0 ? Stack::I0 : Stack::I1);
}

QString bandWidths(int halfWidth)
{
    return QStringLiteral("set_band_w %1\nset_band_h %1\n").arg(halfWidth);
}

/// An even scan's energies, by calculation.
QString evenEnergies(const ScanEnergies& scan, Stack stack)
{
    return QStringLiteral("eng_by_calc_%1 1\n"
                          "eng_calc_disp_unit_%1 0\n"
                          "eng_calc_even_in_eng_%1 1\n"
                          "eng_calc_base_%1 %2\n"
                          "eng_calc_delta_%1 %3\n"
                          "eng_calc_num_%1 %4\n")
        .arg(demoFiles::stackName(stack))
        .arg(QString::number(scan[0], 'g', 6), QString::number(scan[1] - scan[0], 'g', 6))
        .arg(scan.size());
}

/// An uneven scan's energies, from the names of its images.
QString namedEnergies(Stack stack)
{
    return QStringLiteral("eng_by_name_%1\n"
                          "eng_by_name_reg_exp_%1 [0-9]+[.][0-9]+eV\n"
                          "eng_by_name_factor_%1 1\n")
        .arg(demoFiles::stackName(stack));
}

/// Band widths, use of I0, and the scan's energies for both stacks.
QString conditionsText(const Phantom& phantom)
{
    QString text = bandWidths(phantom.conditions.halfWidth) + QStringLiteral("Use_I0 1\n"
                                                                             "set_fluo_type 0\n");
    for (const Stack stack : {Stack::I1, Stack::I0}) {
        text +=
            phantom.conditions.isHard() ? namedEnergies(stack) : evenEnergies(phantom.scan, stack);
    }
    return text;
}

/// What is asked of an edge: that of copper, within 20 eV, above three times the noise of the
/// lines. Lines that come too close are held apart, and references are normalised alike.
QString suggestion()
{
    return QStringLiteral("Suggest_Elm 1\n"
                          "Suggesting_Elm Cu\n"
                          "Suggesting_Edge 0\n"
                          "Suggesting_Pre_End_eV -20\n"
                          "Suggesting_Post_Start_eV 20\n"
                          "suggesting_th_jump 3\n"
                          "hold_gap 1\n"
                          "suggest_for_refs 1\n");
}

/// Loads a stack and takes its dark level from the corner without beam. Setting a dark area gives
/// the earlier selection back, so each needs its own.
QString loading(const QString& folder, const Phantom& phantom, Stack stack, ImageFormat format)
{
    return QStringLiteral("load_%1_files_of_pattern new \"%2/images/\" %3\n"
                          "select_region 1 1 %4 %4\n"
                          "set_%1_dark_area\n")
        .arg(placeOf(stack), folder, demoFiles::imagePattern(stack, format),
             QString::number(phantom.darkCorner - 2));
}

/// A sample that drifts: bad pixels would drift with it once images are moved back.
QString badPixels(const QString& folder, const Phantom& phantom, Stack stack)
{
    if (phantom.conditions.drift == 0) {
        return {};
    }
    return QStringLiteral("error_points_%1 \"%2/bad-pixels.txt\"\nuse_error_points_%1 1\n")
        .arg(placeOf(stack), folder);
}

/// Brings it back by its outline, which changes with the energy and is alike from image to image.
/// The sample moves in the beam, so I0 goes with it.
QString registration(const Phantom& phantom)
{
    if (phantom.conditions.drift == 0) {
        return {};
    }
    return QStringLiteral(":echo \"Bringing the sample back\"\n"
                          "registration_threshold 700\n"
                          "registration_auto_all 1 1\n");
}

QString wholeImage(const Phantom& phantom)
{
    return QStringLiteral("select_region 0 0 %1 %1\n").arg(phantom.conditions.size);
}

/// Makes and saves the energy shift map. A calibration goes on when its command has ended, so the
/// batch waits for it.
QString calibration(const QString& folder)
{
    return QStringLiteral(":echo \"Calibrating on the standard\"\n"
                          "calib_type 1\n"
                          "calib_inner_range 20 1 0.1\n"
                          "calib_crystal 0\n"
                          "calib_target_background 1\n"
                          "calib_std_background 1\n"
                          "calib_load_std \"%1\"\n"
                          "calib_exec\n"
                          "calib_wait\n"
                          "calib_normalize_shift\n"
                          "calib_save_map \"%2\"\n"
                          "calib_clear_map\n")
        .arg(demoFiles::referenceFile(folder, standardSpecies), demoFiles::shiftMap(folder));
}

QString references(const QString& folder, int victoreen)
{
    return QStringLiteral("analyzer_select_analysis_mode 0\n"
                          ":for refs $ref$ 0 %1\n"
                          "analyzer_set_LCF_std $ref$ %2 0 "
                          "\"%3/references/species-$ref$.dat\" 1\n"
                          ":next refs\n")
        .arg(speciesCount - 1)
        .arg(victoreen)
        .arg(folder);
}

QString saveConditions()
{
    return QStringLiteral("select_disp_image 3\n"
                          "saveDataCfg_tiff_as_analyzed 1\n"
                          "saveDataCfg_tiff_fix_scale 1\n"
                          "saveDataCfg_tiff_scale_min %1\n"
                          "saveDataCfg_tiff_scale_max %2\n"
                          "saveDataCfg_text_as_ssv\n"
                          "saveDataCfg_text_as_xyz\n")
        .arg(QString::number(mapScaleMin, 'g', 6), QString::number(mapScaleMax, 'g', 6));
}

/// Each reference's map of one kind as text and as TIFF. All loops
/// have one name: an ended loop of another name would go on replacing $ref$ by its last value.
QString savingMaps(const QString& folder, const QString& kind, int imageType)
{
    return QStringLiteral("analyzer_select_image_type %1\n"
                          ":for refs $ref$ 0 %3\n"
                          "analyzer_select_image $ref$\n"
                          "saveDataCfg_save_as_text\n"
                          "save_data \"%4/maps/%2-ref$ref$.dat\"\n"
                          "saveDataCfg_save_as_tiff\n"
                          "save_data \"%4/maps/%2-ref$ref$.tif\"\n"
                          ":next refs\n")
        .arg(imageType)
        .arg(kind)
        .arg(speciesCount - 1)
        .arg(folder);
}

/// The fit without the energy shift map, for comparison, and with it.
QString easyFits(const QString& folder)
{
    return QStringLiteral(":echo \"Fitting without the energy shift map\"\n"
                          "analyzer_exec_LCF\n") +
           saveConditions() + savingMaps(folder, QStringLiteral("raw"), 0) +
           QStringLiteral(":echo \"Fitting with the energy shift map\"\n"
                          "calib_check_size 1\n"
                          "calib_load_map \"%1\"\n"
                          "analyzer_exec_LCF\n")
               .arg(demoFiles::shiftMap(folder)) +
           savingMaps(folder, QStringLiteral("ratio"), 0) +
           savingMaps(folder, QStringLiteral("dmut"), 1);
}

/// The analyses behind the fits: shift of the edge, residual absorption, jump of copper between
/// energies where all species are flat. Each saves its map under the map's own word.
QString otherAnalyses(const QString& folder)
{
    const QString saving = QStringLiteral("save_data \"%1/maps/map.dat\"\n").arg(folder);
    return QStringLiteral("saveDataCfg_save_as_text\n"
                          ":echo \"Finding the shift of the edge\"\n"
                          "analyzer_select_analysis_mode 5\n"
                          "analyzer_dedge_mode 0\n"
                          "analyzer_exec_LCF\n"
                          "analyzer_select_image 8\n") +
           saving +
           QStringLiteral(":echo \"Finding the residual absorption\"\n"
                          "analyzer_select_analysis_mode 1\n"
                          "analyzer_set_ra_energy %1\n"
                          "analyzer_exec_ra\n"
                          "analyzer_select_image 4\n")
               .arg(QString::number(demoEdgeEnergy)) +
           saving + QStringLiteral("analyzer_select_image 5\n") + saving +
           QStringLiteral(":echo \"Finding the jump of copper\"\n"
                          "analyzer_select_analysis_mode 2\n"
                          "analyzer_target_elements Cu\n"
                          "analyzer_elems_set_deVs 20\n"
                          "analyzer_exec_elems\n"
                          "analyzer_elems_select_disp_mode 0\n") +
           saving;
}

/// A fit of the hard experiment; the background is 0 for Victoreen lines, 1 for straight ones.
QString hardFit(const QString& folder, const HardRun& run, int halfWidth, int background)
{
    return bandWidths(halfWidth) + QStringLiteral("calib_target_background %1\n").arg(background) +
           references(folder, background == 0 ? 1 : 0) + QStringLiteral("analyzer_exec_LCF\n") +
           savingMaps(folder, QLatin1String(run.ratio), 0) +
           savingMaps(folder, QLatin1String(run.dMut), 1);
}

QString easyText(const QString& folder, const Phantom& phantom, ImageFormat format)
{
    return QStringLiteral("# From image stacks to maps of three species\n") +
           conditionsText(phantom) + QStringLiteral(":echo \"Loading the standard\"\n") +
           loading(folder, phantom, Stack::Standard, format) +
           badPixels(folder, phantom, Stack::I0) + loading(folder, phantom, Stack::I0, format) +
           wholeImage(phantom) + calibration(folder) +
           QStringLiteral(":echo \"Loading the sample\"\n") +
           badPixels(folder, phantom, Stack::I1) + loading(folder, phantom, Stack::I1, format) +
           registration(phantom) + wholeImage(phantom) + references(folder, 0) + easyFits(folder) +
           otherAnalyses(folder) + QStringLiteral("quit\n");
}

QString hardText(const QString& folder, const Phantom& phantom, ImageFormat format)
{
    return QStringLiteral("# Few counts, uneven scans, and positions without an edge\n") +
           conditionsText(phantom) + suggestion() + loading(folder, phantom, Stack::I0, format) +
           loading(folder, phantom, Stack::I1, format) + wholeImage(phantom) + saveConditions() +
           QStringLiteral("# In keV: told, and left out of the fits\n"
                          "analyzer_set_LCF_std %1 0 0 \"%2\" 1\n")
               .arg(QString::number(speciesCount), demoFiles::kevReference(folder)) +
           QStringLiteral(":echo \"Fitting blocks with straight lines\"\n") +
           hardFit(folder, straightRun, phantom.conditions.halfWidth, 1) +
           QStringLiteral(":echo \"Fitting single pixels with Victoreen lines\"\n") +
           hardFit(folder, victoreenRun, 0, 0) + QStringLiteral("quit\n");
}
} // namespace

QString batchText(const QString& folder, const Phantom& phantom, ImageFormat format)
{
    return phantom.conditions.isHard() ? hardText(folder, phantom, format)
                                       : easyText(folder, phantom, format);
}
