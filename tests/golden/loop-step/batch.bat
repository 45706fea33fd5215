# The padding of the first bound stays.
:for odd $n$ 001 006 2
set_band_w $n$
:next odd
:for down $d$ 10 1 4
set_band_w $d$
:next down
# A step of 0, or of no number, is one of 1.
:for zero $z$ 1 3 0
set_band_h $z$
:next zero
:for none $x$ 1 2 x
set_band_h $x$
:next none
