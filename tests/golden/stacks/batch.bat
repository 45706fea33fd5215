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
# The dark corner of I1, and again without
select_region 0 0 1 1
set_i1_dark_area
clear_selection
move_position 3 2
save_spectra out/dark
update_i1_dark_area
clear_i1_dark_area
save_spectra out/plain
# Two images more, at energies that are there already; then each third one
load_I1_files add scan/i1_0.img scan/i1_1.img
move_position 3 2
save_spectra out/more
skip_i1 2
cut_f_i1 1
cut_l_i1 2
load_I1_files_of_pattern new scan/ *.img
eng_calc_delta_i1 4
eng_apply_i1
eng_calc_delta_i0 4
eng_apply_i0
move_position 3 2
save_spectra out/fewer
clear_I1_files
save_spectra out/none
clear_I0_files
