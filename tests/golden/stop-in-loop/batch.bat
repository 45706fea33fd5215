:for L %n% 1 1000000
set_band_w %n%
:next L
:echo "not seen"
