# Variables last, loops do not.
:echo "behind $where$ %i%"
set_band_h 2
:let where text
:echo $where$
