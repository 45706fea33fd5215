# From the greater bound to the smaller one, and once when both are equal.
:for down $n$ 3 1
set_band_w $n$
:next down
:for once $o$ 1 1
set_band_h $o$
:next once
:for below $k$ 1 -2
seek_image $k$
:next below
# What is no number counts as 0.
:for none $t$ 0 two
seek_image $t$
:next none
