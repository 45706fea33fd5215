set_band_w 1
:rem_start
set_band_w 2
:for L %n% 1 3
set_band_w %n%
:next L
:let a b
:echo "not seen"
unknown_word
:rem_start
:rem_end
set_band_w 3
:echo $a$
:rem_end
set_band_w 4
