:echo before
set_band_w 1
quit
:echo behind
