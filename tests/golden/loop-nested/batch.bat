# The inner loop starts anew in each pass of the outer one.
:for rows %y% 1 2
:for columns %x% 3 1
move_position %x% %y%
:next columns
:next rows
# A name that no loop has, and one that is used again.
:next nobody
:for rows %z% 7 8
move_position %z% %x%
:next rows
# The outer :next inside the inner loop goes back all the same.
:for a A 1 2
:for b B 1 2
:echo "A B"
:next a
:next b
