#include "BodyFixture.h"
#include "batch/CmdLine.h"
#include "batch/CommandTable.h"
#include "support/ImageFiles.h"

#include <QSet>

namespace {

/// Commands that act rather than set a control.
const char* const deeds[] = {"not ex cmd",
                             "quit",
                             "clear_I1_files",
                             "clear_I0_files",
                             "load_I1_files",
                             "load_I0_files",
                             "load_I1_files_of_pattern",
                             "load_I0_files_of_pattern",
                             "eng_apply_i1",
                             "eng_apply_i0",
                             "eng_copy_to_i0",
                             "seek_image",
                             "save_image",
                             "save_image_w_num",
                             "save_all_images",
                             "save_data",
                             "save_data_as_tiff",
                             "save_all_data",
                             "save_spectra",
                             "save_flat_dark",
                             "export_spectra",
                             "fourier_analysis",
                             "move_position",
                             "cbar_set_range",
                             "cbar_set_all",
                             "cbar_rule",
                             "scale_reset",
                             "zoom_in",
                             "clear_selection",
                             "analyzer_show_window",
                             "analyzer_exec_LCF",
                             "analyzer_exec_ra",
                             "analyzer_exec_elems",
                             "analyzer_elems_set_std",
                             "analyzer_elems_recalc_cor",
                             "analyzer_map1_capture",
                             "analyzer_map2_capture",
                             "analyzer_map1_load",
                             "analyzer_map2_load",
                             "analyzer_process",
                             "analyzer_deglitch",
                             "analyzer_show_deglitched",
                             "analyzer_add_ref",
                             "analyzer_clear_ref",
                             "analyzer_save_spectra",
                             "analyzer_sum_up",
                             "analyzer_sum_up_add",
                             "analyzer_sum_up_del",
                             "analyzer_sum_up_clear",
                             "analyzer2_dark_check",
                             "analyzer2_show_window",
                             "analyzer2_use_error_points", // of a configuration that names a list
                             "calib_show_window",
                             "calib_exec",
                             "calib_wait",
                             "calib_load_map",
                             "calib_save_map",
                             "calib_clear_map",
                             "calib_former_map",
                             "calib_normalize_shift",
                             "saveDataCfg_show_window",
                             "set_i1_dark_area",
                             "set_i0_dark_area",
                             "clear_i1_dark_area",
                             "clear_i0_dark_area",
                             "update_i1_dark_area",
                             "update_i0_dark_area",
                             "explain_position",
                             "registration_set_reference",
                             "registration_auto_shift",
                             "registration_set_shift",
                             "registration_clear_shifts",
                             "registration_auto_all",
                             "screenshot"};

/// Of commands whose control is told by another one: what is told behind the example.
const QHash<QString, QString> toldOtherwise = {
    {"set_i1_energy_pattern", "eng_by_name_reg_exp_i1 _(?<E>\\d+)"},
    {"set_i0_energy_pattern", "eng_by_name_reg_exp_i0 _(?<E>\\d+)"},
    {"eng_calc_end_i1", "eng_calc_delta_i1 0.8"}, // of 100 steps from 8948 eV
    {"eng_calc_end_i0", "eng_calc_delta_i0 0.8"},
    {"eng_calc_even_in_deg_i1", "eng_calc_even_in_eng_i1 0"},
    {"eng_calc_even_in_deg_i0", "eng_calc_even_in_eng_i0 0"},
    {"analyzer_set_scale_max", "analyzer_set_ratio_scale_max 1.2"},
    {"analyzer_set_scale_min", "analyzer_set_dMut_scale_min -0.2"},
    {"analyzer_select_image", "analyzer_select_row 0"},
    {"analyzer_show_outcomes", "analyzer_select_image 19"},
    {"analyzer_select_analysis_mode", "analyzer_use 2 1"},
    {"analyzer_elems_select_disp_mode", "analyzer_select_image 11"},
    {"analyzer_elems_set_deVs", "analyzer_elems_enter Cu-K dE 15"},
    {"analyzer_elems_roi", "analyzer_elems_enter Fe-K ROIe 7140"},
    {"analyzer_elems_thdmut", "analyzer_elems_enter Fe-K Th 0.2"}};

/// Commands of what stands so at the start, and those that bring it away from there.
const QHash<QString, QString> awayFirst = {
    {"eng_by_calc_i1", "eng_by_name_i1"},
    {"eng_by_calc_i0", "eng_by_name_i0"},
    {"eng_by_name_reg_exp_i1", "eng_by_name_reg_exp_i1 x"},
    {"eng_by_name_reg_exp_i0", "eng_by_name_reg_exp_i0 x"},
    {"eng_calc_even_in_deg_i1", "eng_calc_even_in_eng_i1 1"},
    {"eng_calc_even_in_deg_i0", "eng_calc_even_in_eng_i0 1"},
    {"use_error_points_i1", "use_error_points_i1 0"},
    {"use_error_points_i0", "use_error_points_i0 0"},
    {"analyzer_set_dMut_scale_max", "analyzer_set_scale_max 5"},
    {"analyzer_set_ratio_scale_max", "analyzer_set_scale_max 5"},
    {"Suggesting_Elm", "Suggesting_Elm Fe"},
    {"analyzer_select_row", "analyzer_add_ref"},
    {"saveDataCfg_save_as_tiff", "saveDataCfg_save_as_text"},
    {"saveDataCfg_text_as_csv", "saveDataCfg_text_as_ssv"},
    {"saveDataCfg_text_as_xyz", "saveDataCfg_text_as_vals"}};

} // namespace

/// Commands of the batch language in the whole program.
class TestCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(dir_.path()) && QDir().mkdir("references"));
        QByteArray edge;
        for (int E = 8900; E < 9100; E += 2)
            edge += QByteArray::number(E) + ' ' + QByteArray::number(std::atan(E - 8980.0)) + '\n';
        for (const char* file : {"references/foil.dat", "a.dat", "background.dat", "total.dat"})
            QVERIFY(writeBytes(file, edge));
        QVERIFY(writeBytes("bad.dat", "1 1\n"));
        QVERIFY(writeBytes("scan.dat", "12.7\n12.6\n12.5\n"));
        QVERIFY(writeBytes("dark.tif", tiffBytes(8, 8, [](int, int) { return 3.0; })));
    }

    void aCommandSetsItsControl_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("told");
        const QSet<QString> acting(std::begin(deeds), std::end(deeds));
        for (const ExCmdRow& row : exCmdTable() + extensionTable()) {
            if (acting.contains(row.word))
                continue;
            const CmdLine example(row.exampleLine());
            const QString plain = (QStringList(row.word) + example.args).join(' ');
            QTest::newRow(qPrintable(row.word))
                << row.exampleLine() << toldOtherwise.value(row.word, plain);
        }
    }

    /// By the lines that the history makes of the control behind it.
    void aCommandSetsItsControl()
    {
        QFETCH(const QString, line);
        QFETCH(const QString, told);
        QVERIFY(body_.run("analyzer_target_elements Fe Cu"));
        const QString away = awayFirst.value(line.section(' ', 0, 0));
        QVERIFY(away.isEmpty() || body_.run(away));
        QVERIFY(!controls().contains(told));
        QVERIFY(body_.run(line));
        const QString word = told.section(' ', 0, 0);
        QVERIFY2(controls().contains(told), qPrintable(controls().filter(word).join("; ")));
    }

    /// What the history tells of all controls brings a fresh program to where they stand.
    void theStateOfAllControlsCanBeDoneAgain()
    {
        const QStringList state = body_.batch().book().history().state();
        QVERIFY(state.size() > 60);
        DrivenBody fresh;
        QVERIFY(fresh.runAll(state));
        const QStringList again = fresh.batch().book().history().state();
        for (int i = 0; i < std::max(state.size(), again.size()); ++i)
            QCOMPARE(again.value(i), state.value(i));
        QCOMPARE(fresh.batchCtrl()->failures().count, 0);
    }

private:
    /// What the history tells of all controls, without quotes and with files of the test's folder
    /// by their names.
    QStringList controls()
    {
        QStringList lines = body_.batch().book().history().controls();
        return lines.replaceInStrings("\"", "").replaceInStrings(dir_.path() + '/', "");
    }

    const QTemporaryDir dir_;
    DrivenBody body_;
};

QTEST_MAIN(TestCommands)
#include "test_commands.moc"
