#include "DemoFiles.h"

#include "Truth.h"
#include "common/Constants.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cmath>

namespace {
// The references reach beyond the scan and are finer than it.
constexpr double referenceStart = 8928.0; // [eV]
constexpr double referenceEnd = 9058.0;
constexpr double referenceStride = 0.25;
constexpr double si111Spacing = 3.13553; // [angstrom]
constexpr int angleSpecies = 1;

constexpr std::array<Stack, 3> allStacks{Stack::I1, Stack::I0, Stack::Standard};

/// What the files of a stack begin with.
QString stackName(Stack stack)
{
    switch (stack) {
    case Stack::I1:
        return QStringLiteral("i1");
    case Stack::I0:
        return QStringLiteral("i0");
    default:
        return QStringLiteral("std");
    }
}

/// The program's stack that a stack's images go to, as commands name it: the standard takes the
/// sample's place.
QString placeOf(Stack stack)
{
    return stackName(stack == Stack::I0 ? Stack::I0 : Stack::I1);
}

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString simpleReferenceText(int species)
{
    QString text =
        QStringLiteral("# Demonstration reference, species %1\n# E [eV]  mu d\n").arg(species);
    const int count = static_cast<int>((referenceEnd - referenceStart) / referenceStride) + 1;
    for (int i = 0; i < count; ++i) {
        const double energy = referenceStart + i * referenceStride;
        text += number(energy, 3) + QLatin1Char(' ') +
                number(referenceAbsorption(species, energy), 8) + QLatin1Char('\n');
    }
    return text;
}

double braggAngle(double energy)
{
    return std::asin(hcEvAngstrom / (2.0 * si111Spacing * energy)) * 180.0 / shortPi;
}

double braggEnergy(double angle)
{
    return hcEvAngstrom / (2.0 * si111Spacing * std::sin(angle * shortPi / 180.0));
}

/// A scan even in angle, as a monochromator makes it: set angle, read angle, time, I0, I1.
QString angleReferenceText(int species)
{
    constexpr int count = 601;
    const double first = braggAngle(referenceStart);
    const double last = braggAngle(referenceEnd);
    QString text = QStringLiteral("9809     Demonstration beamline\n"
                                  "Reference of species %1\n"
                                  "Mono : SI(111)  D= %2 A   Initial angle = %3 deg\n"
                                  "Points %4\n\n"
                                  "Angle(c)  Angle(o)  time/s  I0  I1\n"
                                  "Offset 0 0 0 0\n")
                       .arg(species)
                       .arg(number(si111Spacing, 5), number(first, 5))
                       .arg(count);
    for (int i = 0; i < count; ++i) {
        const QString angle = number(first + (last - first) * i / (count - 1), 8);
        const double i0 = 500000.0 - 40.0 * i;
        const double mu = referenceAbsorption(species, braggEnergy(angle.toDouble()));
        text += QStringLiteral("%1 %1 1.00 %2 %3\n")
                    .arg(angle, number(i0, 3), number(i0 * std::exp(-mu), 3));
    }
    return text;
}

QString badPixelText(const Phantom& phantom)
{
    const int size = phantom.conditions.size;
    QString text = QStringLiteral("# Size %1 %1\n").arg(size);
    for (const QVector<QPoint>& list : {phantom.hot, phantom.dead}) {
        for (const QPoint& p : list) {
            text += QStringLiteral("%1 %2\n").arg(p.x()).arg(p.y());
        }
    }
    return text;
}

QString configurationText(const QString& folder)
{
    return QStringLiteral("# Configuration of the demonstration experiment\n"
                          "DataRoot \"%1\"\n"
                          "BatchRoot \"%1\"\n"
                          "ErrPoints \"%1/bad-pixels.txt\"\n")
        .arg(folder);
}

/// Band widths, use of I0, and the scan's energies for both stacks.
QString batchConditions(const Phantom& phantom)
{
    QString text = QStringLiteral("set_band_w %1\n"
                                  "set_band_h %1\n"
                                  "Use_I0 1\n"
                                  "set_fluo_type 0\n")
                       .arg(phantom.conditions.halfWidth);
    for (const Stack stack : {Stack::I1, Stack::I0}) {
        text += QStringLiteral("eng_by_calc_%1 1\n"
                               "eng_calc_disp_unit_%1 0\n"
                               "eng_calc_even_in_eng_%1 1\n"
                               "eng_calc_base_%1 %2\n"
                               "eng_calc_delta_%1 %3\n"
                               "eng_calc_num_%1 %4\n")
                    .arg(stackName(stack))
                    .arg(QString::number(phantom.scan.first, 'g', 6),
                         QString::number(phantom.scan.step, 'g', 6))
                    .arg(phantom.scan.count);
    }
    return text;
}

/// Loads a stack and takes its dark level from the corner without beam. Setting a dark area gives
/// the earlier selection back, so each needs its own.
QString batchLoading(const QString& folder, const Phantom& phantom, Stack stack, ImageFormat format)
{
    return QStringLiteral("load_%1_files_of_pattern new \"%2/images/\" %3\n"
                          "select_region 1 1 %4 %4\n"
                          "set_%1_dark_area\n")
        .arg(placeOf(stack), folder, demoFiles::imagePattern(stack, format),
             QString::number(phantom.darkCorner - 2));
}

QString batchWholeImage(const Phantom& phantom)
{
    return QStringLiteral("select_region 0 0 %1 %1\n").arg(phantom.conditions.size);
}

/// Makes and saves the energy shift map. A calibration goes on when its command has ended, so the
/// batch waits for it.
QString batchCalibration(const QString& folder)
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

QString batchReferences(const QString& folder)
{
    return QStringLiteral("analyzer_select_analysis_mode 0\n"
                          ":for refs $ref$ 0 %1\n"
                          "analyzer_set_LCF_std $ref$ 0 0 "
                          "\"%2/references/species-$ref$.dat\" 1\n"
                          ":next refs\n")
        .arg(speciesCount - 1)
        .arg(folder);
}

QString batchSaveConditions()
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
QString batchSaveMaps(const QString& folder, const QString& kind, int imageType)
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
QString batchFits(const QString& folder)
{
    return QStringLiteral(":echo \"Fitting without the energy shift map\"\n"
                          "analyzer_exec_LCF\n") +
           batchSaveConditions() + batchSaveMaps(folder, QStringLiteral("raw"), 0) +
           QStringLiteral(":echo \"Fitting with the energy shift map\"\n"
                          "calib_check_size 1\n"
                          "calib_load_map \"%1\"\n"
                          "analyzer_exec_LCF\n")
               .arg(demoFiles::shiftMap(folder)) +
           batchSaveMaps(folder, QStringLiteral("ratio"), 0) +
           batchSaveMaps(folder, QStringLiteral("dmut"), 1);
}

bool saveText(const QString& fname, const QString& text, QString* error)
{
    QSaveFile file(fname);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.toUtf8());
        if (file.commit()) {
            return true;
        }
    }
    *error = QStringLiteral("Can't write %1: %2").arg(fname, file.errorString());
    return false;
}

bool makeFolders(const QString& folder, QString* error)
{
    // Configuration and batch lines can't hold quotes and line ends, and the batch would replace
    // its loop's variable.
    if (folder.contains(QLatin1Char('"')) || folder.contains(QLatin1Char('\n')) ||
        folder.contains(QLatin1String("$ref$"))) {
        *error = QStringLiteral("The folder's path must not hold a double quote, a line end or "
                                "$ref$: ") +
                 folder;
        return false;
    }
    for (const char* name : {"images", "references", "maps", "pictures"}) {
        const QString path = folder + QLatin1Char('/') + QLatin1String(name);
        if (!QDir().mkpath(path)) {
            *error = QStringLiteral("Can't make the folder %1").arg(path);
            return false;
        }
    }
    return true;
}

/// What an earlier experiment left in the folder would be loaded, or compared, with this one.
void removeEarlierFiles(const QString& folder)
{
    for (const char* name : {"images", "maps", "pictures"}) {
        QDir dir(folder + QLatin1Char('/') + QLatin1String(name));
        const QStringList filters{
            QStringLiteral("i?_????.*"),    QStringLiteral("std_????.*"),
            QStringLiteral("ratio-ref*"),   QStringLiteral("dmut-ref*"),
            QStringLiteral("raw-ref*"),     QStringLiteral("shift.emp"),
            QStringLiteral("screen-*.png"), QStringLiteral("truth-result-*.png")};
        for (const QString& file : dir.entryList(filters, QDir::Files)) {
            dir.remove(file);
        }
    }
}

bool writeImages(const QString& folder, const Phantom& phantom, ImageFormat format, QString* error)
{
    const int size = phantom.conditions.size;
    for (int i = 0; i < phantom.scan.count; ++i) {
        for (const Stack stack : allStacks) {
            const QString fname = demoFiles::imageFile(folder, stack, i, format);
            if (!writeImage(format, fname, size, size, exposure(phantom, stack, i))) {
                *error = QStringLiteral("Can't write %1").arg(fname);
                return false;
            }
        }
    }
    return true;
}

bool writeReferences(const QString& folder, QString* error)
{
    for (int s = 0; s < speciesCount; ++s) {
        if (!saveText(demoFiles::referenceFile(folder, s), referenceText(s), error)) {
            return false;
        }
    }
    return true;
}
} // namespace

QString demoFiles::imagePattern(Stack stack, ImageFormat format)
{
    return stackName(stack) + QStringLiteral("_*.") + imageSuffix(format);
}

QString demoFiles::imageFile(const QString& folder, Stack stack, int index, ImageFormat format)
{
    const QString number = QStringLiteral("%1").arg(index, 4, 10, QLatin1Char('0'));
    return folder +
           QStringLiteral("/images/%1_%2.%3").arg(stackName(stack), number, imageSuffix(format));
}

QString demoFiles::referenceFile(const QString& folder, int species)
{
    return folder + QStringLiteral("/references/species-%1.dat").arg(species);
}

QString demoFiles::truthFile(const QString& folder)
{
    return folder + QStringLiteral("/truth.dat");
}

QString demoFiles::mapText(const QString& folder, const QString& kind, int species)
{
    // The program adds the number of the first reference in use: 0.
    return folder + QStringLiteral("/maps/%1-ref%2-0.dat").arg(kind).arg(species);
}

QString demoFiles::mapTiff(const QString& folder, const QString& kind, int species)
{
    return folder + QStringLiteral("/maps/%1-ref%2-0.tif").arg(kind).arg(species);
}

QString demoFiles::shiftMap(const QString& folder)
{
    return folder + QStringLiteral("/maps/shift.emp");
}

QString demoFiles::pictureFolder(const QString& folder)
{
    return folder + QStringLiteral("/pictures");
}

QString referenceText(int species)
{
    return species == angleSpecies ? angleReferenceText(species) : simpleReferenceText(species);
}

QString batchText(const QString& folder, const Phantom& phantom, ImageFormat format)
{
    return QStringLiteral("# From image stacks to maps of three species\n") +
           batchConditions(phantom) + QStringLiteral(":echo \"Loading the standard\"\n") +
           batchLoading(folder, phantom, Stack::Standard, format) +
           batchLoading(folder, phantom, Stack::I0, format) + batchWholeImage(phantom) +
           batchCalibration(folder) + QStringLiteral(":echo \"Loading the sample\"\n") +
           batchLoading(folder, phantom, Stack::I1, format) + batchWholeImage(phantom) +
           batchReferences(folder) + batchFits(folder) + QStringLiteral("quit\n");
}

bool writeExperiment(const QString& folder, const ExperimentConditions& conditions,
                     ImageFormat format, QString* error)
{
    const QString path = QFileInfo(folder).absoluteFilePath();
    if (!makeFolders(path, error)) {
        return false;
    }
    removeEarlierFiles(path);
    const Phantom phantom = makePhantom(conditions);
    return writeImages(path, phantom, format, error) && writeReferences(path, error) &&
           saveText(path + QStringLiteral("/bad-pixels.txt"), badPixelText(phantom), error) &&
           saveText(path + QStringLiteral("/config.cfg"), configurationText(path), error) &&
           saveText(path + QStringLiteral("/demo.bat"), batchText(path, phantom, format), error) &&
           saveText(demoFiles::truthFile(path), truthText(phantom), error);
}
