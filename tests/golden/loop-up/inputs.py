"""Three scans, each with shares of its own."""
from experiment import write_common, write_scan

write_common()
for n in "123":
    write_scan(f"scan-{n}", lambda x, y, n=int(n): 0.1 * n + 0.05 * x + 0.1 * y)
