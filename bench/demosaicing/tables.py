"""The tables of figures, for people and for the documentation."""
import collections
import statistics

from measures import NOISE
from methods import OURS

BEGIN, END = "<!-- made by bench/quality -->\n", "<!-- end of what bench/quality made -->\n"
SHORT = [("OpenCV", "bilinear"), ("OpenCV", "EA"), ("OpenCV", "VNG"), ("libdc1394", "HQLinear"), ("libdc1394", "AHD"),
         (OURS, "bilinear"), (OURS, "mhc"), (OURS, "adaptive")]
NAMES = {"mhc": "gradient-corrected (mhc)"}

Results = collections.namedtuple("Results", "pictures quality times orders noise")


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def label(method):
    name = f"{method.library}, {NAMES.get(method.name, method.name)}"
    return f"**{name}**" if method.library == OURS else name


def by_quality(results):
    return sorted(results.quality, key=lambda method: statistics.mean(results.quality[method]))


def nanoseconds(value):
    return f"{value:.2f}" if value < 10 else f"{value:.0f}"


def processor():
    with open("/proc/cpuinfo") as file:
        facts = dict(line.split(":", 1) for line in file.read().split("\n\n")[0].split("\n") if ":" in line)
    facts = {key.strip(): value.strip() for key, value in facts.items()}
    if "model name" not in facts:
        return "unknown processor"
    return f"{facts['model name']} (family {facts['cpu family']}, model {facts['model']})"


def methods_table(results):
    groups = list(dict.fromkeys(group for group, _, _ in results.pictures))
    rows = []
    for method in by_quality(results):
        values = results.quality[method]
        means = [statistics.mean(value for value, picture in zip(values, results.pictures) if picture[0] == group)
                 for group in groups]
        worst = min(range(len(values)), key=values.__getitem__)
        rows.append([label(method), f"{statistics.mean(values):.2f}"] + [f"{mean:.1f}" for mean in means] +
                    [f"{values[worst]:.1f} ({results.pictures[worst][1]})", nanoseconds(results.times[method])])
    return table(["method", "mean CPSNR, dB"] + groups + ["worst picture", "ns a pixel"], rows)


def orders_table(results):
    text = []
    for gains, sets, figures in results.orders:
        rows = [[NAMES.get(name, name), f"{after:.1f}", f"{first:.1f}"] for name, (after, first) in figures.items()]
        sensor = " and ".join(f"{colour} / {gain}" for colour, gain in zip(("red", "green", "blue"), gains) if gain != 1)
        made = table(["method", "colours looked up", "samples looked up"], rows)
        text.append(f"{sensor}; {', '.join(sets)}:\n\n{made}")
    return "\n".join(text)


def noise_table(results):
    rows = [[label(method)] + [f"{total:.1f} / {chroma:.1f}" for total, chroma in levels]
            for method, levels in results.noise.items()]
    return table(["method"] + [f"noise of {deviation}" for deviation in NOISE], rows)


def full(results):
    return f"""\
{len(results.pictures)} photographs, reduced until no earlier demosaicing shows; borders of 10 pixels are left out.
Processor time: 1920x1080, one thread, the least of many rounds, on {processor()}.

{methods_table(results)}
The order of lookup and demosaicing: mean CPSNR of sRGB pictures from linear 12-bit sensors with weak red and blue.

{orders_table(results)}
Noise on the mosaic, by its standard deviation in steps of 8 bits: mean CPSNR / PSNR of the chroma alone, in dB.

{noise_table(results)}"""


def short(results):
    found = {(method.library, method.name): method for method in results.quality}
    rows = [[label(method), f"{statistics.mean(results.quality[method]):.1f}", f"{min(results.quality[method]):.1f}",
             nanoseconds(results.times[method])]
            for method in sorted((found[key] for key in SHORT if key in found), key=by_quality(results).index)]
    return (f"{processor()}; {len(results.pictures)} photographs, 1920x1080 for times, one thread:\n\n"
            + table(["demosaicing, 8 bits", "mean CPSNR, dB", "worst picture", "ns a pixel"], rows))


def put(path, text):
    """Replaces the text between the marks of a file."""
    with open(path) as file:
        content = file.read()
    if BEGIN not in content or END not in content:
        raise SystemExit(f"bench/quality: {path} lacks the lines that mark the place of its tables:\n{BEGIN}{END}")
    before, rest = content.split(BEGIN, 1)
    with open(path, "w") as file:
        file.write(before + BEGIN + "\n" + text + "\n" + END + rest.split(END, 1)[1])
