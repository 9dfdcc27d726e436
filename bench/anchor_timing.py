"""The timing the anchor scripts share: best and median of repeats, wall and CPU, in ms."""
import time


def timed(f, repeats=15):
    wall, cpu = [], []
    for _ in range(repeats):
        s, c = time.perf_counter(), time.process_time()
        f()
        wall.append((time.perf_counter() - s) * 1000.0)
        cpu.append((time.process_time() - c) * 1000.0)
    wall.sort()
    cpu.sort()
    return wall[0], wall[len(wall) // 2], cpu[0], cpu[len(cpu) // 2]


def report(name, f, repeats=15):
    best, median, cpu_best, cpu_median = timed(f, repeats)
    print(f"{name}: wall best {best:.2f} ms, median {median:.2f} ms; cpu best {cpu_best:.2f} ms, median {cpu_median:.2f} ms")
