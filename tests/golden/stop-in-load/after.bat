# The load that was under way came to its end.
analyzer_exec_LCF
save_data out/after.dat
