"""A detector with dark counts in all images of I1, and a corner without beam."""
from experiment import write_common, write_scan

write_common()
write_scan("scan", lambda x, y: 0.2 + 0.05 * x + 0.1 * y, dark=10000000)
