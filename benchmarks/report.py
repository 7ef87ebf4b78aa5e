"""Makes the table and the growth list of the readings."""
import os
import statistics

import figures


def machine():
    model = "unknown"
    memory = 0
    with open("/proc/cpuinfo") as file:
        for line in file:
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    with open("/proc/meminfo") as file:
        memory = int(file.readline().split()[1]) / 2**20
    return {"processor": model, "cores": os.cpu_count(), "memory_GiB": round(memory),
            "load": round(os.getloadavg()[0], 1)}


def scaled(values, unit):
    return [value / figures.MEGABYTE for value in values] if unit == "MB" else values


def line_of(figure, series):
    ours = scaled(series[figure.ours]["values"], figure.unit)
    if figure.needs:  # what is there anyhow is taken off
        usual = statistics.median(scaled(series[figure.needs[0]]["values"], figure.unit))
        ours = [value - usual for value in ours]
    reading = figure.take(ours)
    line = {"figure": figure.label, "unit": figure.unit, "ours": reading, "ours_least": min(ours),
            "ours_median": statistics.median(ours), "beside": figure.beside_label,
            "to_reach": figure.goal, "beside_reading": None, "ratio": None, "reached": None}
    beside = None
    if figure.beside:
        values = scaled(series[figure.beside]["values"], figure.unit)
        beside = figure.take(values)
        line["beside_reading"] = beside
        line["beside_least"] = min(values)
        line["beside_median"] = statistics.median(values)
        line["ratio"] = reading / beside if beside else None
        line["ratio_of_least"] = min(ours) / min(values) if min(values) else None
    if figure.holds:
        line["reached"] = bool(figure.holds(reading, beside))
    return line


def growth_of(growth, series):
    readings = []
    for size in figures.SIZES:
        value = growth.take(scaled(series[f"{growth.base()}{size}{growth.tail()}"]["values"],
                                   growth.unit))
        if growth.minus:
            value -= growth.take(series[f"{growth.minus}{size}"]["values"])
        readings.append(value)
    found = figures.exponent(figures.SIZES, readings)
    return {"figure": growth.label, "unit": growth.unit, "sizes": list(figures.SIZES),
            "readings": readings, "exponent": found, "limit": growth.limit,
            "reached": found <= growth.limit}


def make(series):
    """Those figures and growths for which everything was read."""
    known = lambda each: all(name in series for name in each.series())
    return {"machine": machine(),
            "figures": [line_of(each, series) for each in figures.figures() if known(each)],
            "growth": [growth_of(each, series) for each in figures.GROWTHS if known(each)]}


def number(value):
    if value is None:
        return ""
    if value == int(value) and abs(value) < 1e6:
        return str(int(value))
    return f"{value:.3f}" if abs(value) < 10 else f"{value:.1f}"


def columns(rows):
    widths = [max(len(row[place]) for row in rows) for place in range(len(rows[0]))]
    return "\n".join("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip()
                     for row in rows)


def verdict(reached):
    return {None: "", True: "yes", False: "NO"}[reached]


def text(result):
    rows = [("figure", "ours", "(median)", "", "beside it", "", "(median)", "ratio", "to reach",
             "reached")]
    for line in result["figures"]:
        rows.append((line["figure"], number(line["ours"]), number(line["ours_median"]), line["unit"],
                     line["beside"], number(line["beside_reading"]),
                     number(line.get("beside_median")),
                     number(line["ratio"]), line["to_reach"], verdict(line["reached"])))
    parts = [columns(rows)]
    if result["growth"]:
        rows = [("growth", "", *(f"{size:,}" for size in figures.SIZES), "exponent", "at most",
                 "reached")]
        for line in result["growth"]:
            rows.append((line["figure"], line["unit"], *map(number, line["readings"]),
                         f"{line['exponent']:.2f}", number(line["limit"]),
                         verdict(line["reached"])))
        parts.append(columns(rows))
    on = result["machine"]
    parts.append(f"On {on['processor']}, {on['cores']} cores, {on['memory_GiB']} GiB, "
                 f"load {on['load']}. Times are the least of several runs unless it says otherwise: the "
                 "machine's other work only adds to them.")
    return "\n\n".join(parts)
