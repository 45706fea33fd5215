Use_I0 1
set_band_w 0
set_band_h 0
eng_by_calc_i1 1
eng_calc_base_i1 8920
eng_calc_delta_i1 2
eng_calc_even_in_eng_i1 1
eng_copy_to_i0
load_I0_files_of_pattern new ./ i0_*.img
load_I1_files_of_pattern new scan/ *.img
analyzer_set_LCF_std 0 0 0 a.dat
analyzer_set_LCF_std 1 0 0 b.dat
analyzer_exec_LCF
select_disp_image 3
# Every form of the same map, and all maps in one
analyzer_select_image 0
saveDataCfg_save_as_text
saveDataCfg_text_as_csv
saveDataCfg_text_as_xyz
save_data out/rows.txt
saveDataCfg_text_as_ssv
saveDataCfg_text_as_vals
analyzer_select_row 1
save_data out/values.dat
saveDataCfg_save_as_tiff
saveDataCfg_tiff_fix_scale 1
saveDataCfg_tiff_scale_min 0
saveDataCfg_tiff_scale_max 1
saveDataCfg_tiff_as_analyzed 1
save_data_as_tiff out/whole.tif
saveDataCfg_save_as_float_tiff
save_all_data out/all.tif
# Beside the maps
save_flat_dark
move_position 2 1
save_spectra out/spectrum
explain_position 2 1 out/why.txt
analyzer_save_spectra out/fit
# The spectra of four points as text, a file for each kind
select_region 1 1 3 3
export_normalized 1
export_raw_xafs 1
export_raw 1
export_spectra out/spectra.dat
# And one of them under its own name
export_normalized 0
export_raw_xafs 0
export_spectra out/counts
