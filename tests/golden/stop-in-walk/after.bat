# So did the walk.
save_data out/after.dat
