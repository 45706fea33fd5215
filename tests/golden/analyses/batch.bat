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
# What is left of the absorption at one energy, and the jump of copper
analyzer_use 0 0
analyzer_use 1 1
analyzer_set_ra_energy 9000
analyzer_exec_ra
Suggest_Elm 1
Suggesting_Elm Cu
analyzer_target_elements Cu
analyzer_elems_set_deVs 20
analyzer_use 2 1
analyzer_exec_elems
analyzer_elems_set_std
analyzer_elems_recalc_cor
saveDataCfg_save_as_text
saveDataCfg_text_as_ssv
saveDataCfg_text_as_vals
save_all_data out/map.dat
# A jump over itself, and less mu below the edge
select_disp_image 3
analyzer_elems_select_show Cu
analyzer_elems_select_disp_mode 0
analyzer_map1_capture
analyzer_map2_capture
analyzer_use 4 1
analyzer_process 1
analyzer_show_operand 0
save_data out/divided.dat
analyzer_use 4 0
analyzer_elems_select_disp_mode 5
analyzer_map2_capture
analyzer_use 4 1
analyzer_process 0
save_data out/subtracted.dat
analyzer_show_operand 2
save_data out/operand.dat
