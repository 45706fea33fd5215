set_band\
_w 3
move_position 4 \   
5
:echo "one \
line"
# a comment \
that goes on
set_band_h 2\

set_band_h 1
set_band_w 7 \