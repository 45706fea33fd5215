# Names and values; quotes keep blanks; the word of a command is found in any case.
:let size 2
SET_band_W $size$
set_band_h $Size$
:let folder "two words"
:echo "in $folder$"
# A value that holds a later variable is replaced further, one that holds an earlier one is not.
:let first $second$
:let second done
:echo $first$
:let third $second$-
:echo $third$
:let second anew
:echo $first$
:let back $first$
:echo $back$
# Nothing is replaced in :let, in bounds of loops and in words.
:let to 2
:for L i $to$ 3
set_band_w i
:next L
$word$ 1
# Text behind a command is no comment.
set_band_w 1 # note
:echo "not closed
:echo $DataRoot$
""
"" foo
