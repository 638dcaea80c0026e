"""The bar charts of the report."""

from formats import times
from results import best_peer, ratios, topic_order


def draw(title, rows, path):
    """A bar for each row, on a logarithmic scale, sorted within its topic. The same numbers draw the same bytes."""
    import matplotlib
    matplotlib.use("Agg")
    matplotlib.rcParams.update({"svg.hashsalt": "bench", "svg.fonttype": "none", "font.size": 7,
                                "font.family": "sans-serif"})
    from matplotlib import pyplot

    values = ratios(rows)
    keys = sorted(values, key=lambda key: (topic_order(key)[0], key[0], -values[key], key))
    places, labels, groups = [], [], []
    place = 0.0
    for i, key in enumerate(keys):
        if i == 0 or key[0] != keys[i - 1][0]:
            place += 1.6
            groups.append((place - 0.9, key[0]))
        places.append(place)
        labels.append(f"{key[1]}, {key[2]}")
        place += 1

    figure, axes = pyplot.subplots(figsize=(8, 1 + 0.155 * place))
    colours = ["#2f6f9f" if values[key] >= 1 else "#d1601f" for key in keys]
    axes.barh(places, [values[key] - 1 for key in keys], left=1, height=0.72, color=colours)
    axes.set_xscale("log")
    low = min([0.5] + [value for value in values.values()])
    high = max([2.0] + [value for value in values.values()])
    axes.set_xlim(low * 0.8, high * 3)
    ticks = (0.1, 0.2, 0.5, 1, 1.5, 2, 5, 10, 20, 50, 100, 200, 500, 1000)
    ticks = [tick for tick in ticks if low * 0.8 <= tick <= high]
    axes.set_xticks(ticks, [f"{tick:g}" for tick in ticks])
    axes.set_xticks([], minor=True)
    axes.xaxis.set_ticks_position("both")
    axes.tick_params(axis="x", labeltop=True)
    axes.axvline(1, color="black", linewidth=0.8)
    for key, at in zip(keys, places):
        axes.text(max(values[key], 1) * 1.03, at, f"{times(values[key])}  {best_peer(rows[key])[0]}",
                  va="center", fontsize=6)
    for at, topic in groups:
        axes.text(low * 0.8, at, f" {topic}", va="center", fontweight="bold")
    axes.set_yticks(places, labels)
    axes.tick_params(axis="y", length=0)
    axes.set_ylim(place, -0.2)
    axes.grid(axis="x", linewidth=0.3)
    axes.set_axisbelow(True)
    for side in ("left", "right"):
        axes.spines[side].set_visible(False)
    axes.set_title(f"{title}: the fastest peer's time over ours (above 1 we are faster), and who that peer is\n")
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None, "Creator": None})
    pyplot.close(figure)
