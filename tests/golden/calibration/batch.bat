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
calib_load_std foil.dat
calib_type 1
calib_inner_range 6 1 0.01
calib_exec
calib_wait
calib_save_map out/shift.emp
calib_normalize_shift
calib_save_map out/normalized.emp
calib_clear_map
calib_former_map
calib_save_map out/former.emp
calib_clear_map
calib_load_map out/shift.emp
calib_save_map out/loaded.emp
