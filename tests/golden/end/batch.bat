set_band_w 1
:rem_start
:end
:rem_end
set_band_w 2
