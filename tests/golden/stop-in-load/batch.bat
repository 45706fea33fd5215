Use_I0 1
set_band_w 0
set_band_h 0
eng_by_calc_i1 1
eng_calc_base_i1 8920
eng_calc_delta_i1 2
eng_calc_even_in_eng_i1 1
eng_by_calc_i0 1
eng_calc_base_i0 8920
eng_calc_delta_i0 2
eng_calc_even_in_eng_i0 1
analyzer_set_LCF_std 0 0 0 a.dat
analyzer_set_LCF_std 1 0 0 b.dat
saveDataCfg_save_as_text
saveDataCfg_text_as_ssv
saveDataCfg_text_as_vals
analyzer_select_image 0
load_I0_files_of_pattern new ./ i0_*.img

load_I1_files_of_pattern new scan/ *.img
:echo "not seen"
save_data out/map.dat
