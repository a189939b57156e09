#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""How hot is the tip of a cooling fin? A small simulation in steps.

    fin.py material MEASURED.csv MATERIAL.csv
    fin.py mesh     INPUT MATERIAL.csv CELLS TABLE.csv     (adds a row to the table)
    fin.py solve    INPUT MATERIAL.csv MESH.csv FIELD.csv RESULT.csv
    fin.py plot     FIELD.csv PLOT.svg
    fin.py report   INPUT RESULT.csv FIELD.csv TABLE.csv REPORT.pdf

Heat flows from the warm base along the fin and leaves it to the air. The upper
half of the fin is cut into cells; in the steady state what flows into a cell
flows out of it, and Gauss-Seidel steps with over-relaxation find that state.
"""

import csv
import math
import os
import sys

FIXED_TITLE = "Temperature of a cooling fin"


def read_input(path):
    values = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            words = line.split("#")[0].split()
            if words:
                values[words[0]] = float(words[1])
    return values


def read_rows(path):
    with open(path, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def write_rows(path, names, rows):
    with open(path, "w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(names)
        writer.writerows(rows)


def material(measured, target):
    """A straight line through the measured conductivities, by least squares."""
    points = [tuple(map(float, row.values())) for row in read_rows(measured)]
    mean_t = sum(t for t, _ in points) / len(points)
    mean_k = sum(k for _, k in points) / len(points)
    slope = sum((t - mean_t) * (k - mean_k) for t, k in points) \
        / sum((t - mean_t) ** 2 for t, _ in points)
    write_rows(target, ["reference_C", "conductivity_W_per_mK", "slope_W_per_mK2"],
               [["%.2f" % mean_t, "%.3f" % mean_k, "%.5f" % slope]])


class Fin:
    def __init__(self, values, stuff, along, across):
        self.values = values
        self.reference, self.k0, self.slope = (float(text) for text in stuff.values())
        self.along, self.across = along, across
        self.dx = values["length"] / 1000 / along
        self.dy = values["thickness"] / 2000 / across
        self.field = [[values["base"]] * across for _ in range(along)]

    def conductivity(self, temperature):
        return self.k0 + self.slope * (temperature - self.reference)

    def _to_air(self, depth, conductivity):
        """Conductance from a cell's middle through its own half and the surface, per area."""
        return 1 / (depth / 2 / conductivity + 1 / self.values["convection"])

    def _balanced(self, i, j):
        """The temperature at which cell (i, j) is in balance with all around it."""
        field, dx, dy = self.field, self.dx, self.dy
        k = self.conductivity(field[i][j])
        flows = []
        if i == 0:
            flows.append((k * dy / (dx / 2), self.values["base"]))
        else:
            flows.append((k * dy / dx, field[i - 1][j]))
        if i == self.along - 1:
            flows.append((self._to_air(dx, k) * dy, self.values["air"]))
        else:
            flows.append((k * dy / dx, field[i + 1][j]))
        if j > 0:
            flows.append((k * dx / dy, field[i][j - 1]))
        if j == self.across - 1:
            flows.append((self._to_air(dy, k) * dx, self.values["air"]))
        else:
            flows.append((k * dx / dy, field[i][j + 1]))
        return sum(g * t for g, t in flows) / sum(g for g, _ in flows)

    def solve(self):
        """Returns how many steps it took."""
        relax = 2 / (1 + math.sin(math.pi / (2 * self.along)))
        for step in range(1, 100000):
            change = 0.0
            for i in range(self.along):
                row = self.field[i]
                for j in range(self.across):
                    difference = relax * (self._balanced(i, j) - row[j])
                    row[j] += difference
                    change = max(change, abs(difference))
            if change < self.values["tolerance"]:
                return step
        raise SystemExit("no steady state was found")

    def tip(self):
        return sum(self.field[-1]) / self.across

    def heat(self):
        """Heat through the base, in watts per metre of fin width, both halves."""
        return 2 * sum(self.conductivity(row) * self.dy / (self.dx / 2)
                       * (self.values["base"] - row) for row in self.field[0])

    def by_hand(self):
        """Tip temperature by the formula for thin fins, for comparison."""
        v = self.values
        k = self.conductivity((v["base"] + v["air"]) / 2)
        t, length = v["thickness"] / 1000, v["length"] / 1000
        m = math.sqrt(2 * v["convection"] / (k * t))
        return v["air"] + (v["base"] - v["air"]) / math.cosh(m * (length + t / 2))


def solved(input_path, material_path, along=None):
    values = read_input(input_path)
    fin = Fin(values, read_rows(material_path)[0], along or int(values["cells_along"]),
              int(values["cells_across"]))
    return fin, fin.solve()


def mesh(input_path, material_path, cells, table):
    fin, steps = solved(input_path, material_path, int(cells))
    names = ["cells_along", "steps", "tip_C", "heat_W_per_m"]
    rows = [list(row.values()) for row in read_rows(table)] if os.path.exists(table) else []
    rows.append([cells, steps, "%.3f" % fin.tip(), "%.2f" % fin.heat()])
    write_rows(table, names, rows)


def solve(input_path, material_path, mesh_path, field_path, result_path):
    fin, steps = solved(input_path, material_path)
    cells = [(i, j, "%.3f" % ((i + 0.5) * fin.dx * 1000), "%.3f" % ((j + 0.5) * fin.dy * 1000))
             for i in range(fin.along) for j in range(fin.across)]
    write_rows(mesh_path, ["along", "across", "x_mm", "y_mm"], cells)
    write_rows(field_path, ["x_mm", "y_mm", "temperature_C"],
               [(x, y, "%.4f" % fin.field[i][j]) for i, j, x, y in cells])
    write_rows(result_path, ["quantity", "value", "unit"],
               [("tip temperature", "%.2f" % fin.tip(), "C"),
                ("tip temperature by formula", "%.2f" % fin.by_hand(), "C"),
                ("heat through the base", "%.1f" % fin.heat(), "W/m"),
                ("steps", steps, "")])


def profile(field_path):
    """Temperature along the middle of the fin."""
    rows = read_rows(field_path)
    lowest = min(float(row["y_mm"]) for row in rows)
    return [(float(row["x_mm"]), float(row["temperature_C"])) for row in rows
            if float(row["y_mm"]) == lowest]


def plot(field_path, target):
    points = profile(field_path)
    line = " ".join("%.1f,%.1f" % (50 + 5 * x, 220 - 2.5 * (t - 25)) for x, t in points)
    marks = "".join('<text x="%d" y="236" text-anchor="middle">%d</text>' % (50 + 5 * x, x)
                    for x in range(0, 61, 10))
    marks += "".join('<text x="44" y="%.1f" text-anchor="end">%d</text>'
                     % (224 - 2.5 * (t - 25), t) for t in range(25, 96, 10))
    with open(target, "w", encoding="utf-8") as file:
        file.write('<svg xmlns="http://www.w3.org/2000/svg" width="380" height="260" '
                   'font-family="sans-serif" font-size="10">\n'
                   '<path d="M50 30V220H360" fill="none" stroke="black"/>\n%s\n'
                   '<text x="200" y="252" text-anchor="middle">distance from the base, mm</text>\n'
                   '<text x="50" y="20">temperature, \u00b0C</text>\n'
                   '<polyline points="%s" fill="none" stroke="#c03020" stroke-width="2"/>\n'
                   "</svg>\n" % (marks, line))


class Page:
    """One page of a PDF, drawn from nothing."""

    def __init__(self):
        self.commands = []

    def text(self, x, y, words, size=10, font="F1"):
        data = words.encode("cp1252").replace(b"\\", b"\\\\").replace(b"(", b"\\(")
        self.commands.append(b"BT /%s %d Tf %g %g Td (%s) Tj ET"
                             % (font.encode(), size, x, y, data.replace(b")", b"\\)")))

    def lines(self, points, width=1.0, colour="0 0 0"):
        path = " ".join("%.1f %.1f %s" % (x, y, "l" if index else "m")
                        for index, (x, y) in enumerate(points))
        self.commands.append(("%s RG %g w %s S" % (colour, width, path)).encode())

    def save(self, path):
        content = b"\n".join(self.commands)
        objects = [b"<< /Type /Catalog /Pages 2 0 R >>",
                   b"<< /Type /Pages /Count 1 /Kids [3 0 R] >>",
                   b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
                   b"/Resources << /Font << /F1 5 0 R /F2 6 0 R >> >> >>",
                   b"<< /Length %d >>\nstream\n%s\nendstream" % (len(content), content)]
        objects += [b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica%s "
                    b"/Encoding /WinAnsiEncoding >>" % style for style in (b"", b"-Bold")]
        data, table = b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n", b"0000000000 65535 f \n"
        for number, body in enumerate(objects, 1):
            table += b"%010d 00000 n \n" % len(data)
            data += b"%d 0 obj\n%s\nendobj\n" % (number, body)
        data += b"xref\n0 7\n%strailer\n<< /Size 7 /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" \
            % (table, len(data))
        with open(path, "wb") as file:
            file.write(data)


def report(input_path, result_path, field_path, table_path, target):
    values = read_input(input_path)
    page = Page()
    page.text(57, 770, FIXED_TITLE, 18, "F2")
    page.text(57, 745, "A fin %g mm long and %g mm thick stands on a housing of %g \u00b0C in air of "
              "%g \u00b0C." % (values["length"], values["thickness"], values["base"],
                              values["air"]))
    page.text(57, 731, "How hot is its tip, and how much heat does it carry away?")
    y = 700
    for row in read_rows(result_path):
        page.text(57, y, row["quantity"])
        page.text(260, y, ("%s %s" % (row["value"], row["unit"])).replace(" C", " \u00b0C"),
                  font="F2")
        y -= 15
    page.text(57, y - 15, "How the result depends on the mesh:")
    y -= 33
    for column, name in enumerate(("cells along", "steps", "tip, \u00b0C", "heat, W/m")):
        page.text(57 + 90 * column, y, name, font="F2")
    for row in read_rows(table_path):
        y -= 15
        for column, value in enumerate(row.values()):
            page.text(57 + 90 * column, y, value)
    bottom, left = 260, 90
    page.lines([(left, bottom + 240), (left, bottom), (left + 430, bottom)])
    for x in range(0, 61, 10):
        page.text(left + 7 * x - 5, bottom - 14, str(x), 9)
    for t in range(25, 96, 10):
        page.text(left - 20, bottom + 3.2 * (t - 25) - 3, str(t), 9)
    page.text(left + 140, bottom - 32, "distance from the base, mm", 9)
    page.text(left, bottom + 248, "temperature, \u00b0C", 9)
    page.lines([(left + 7 * x, bottom + 3.2 * (t - 25)) for x, t in profile(field_path)], 2,
               "0.75 0.19 0.13")
    page.text(57, 150, "How this came about, and every file behind it, travels inside this document.")
    page.save(target)


COMMANDS = {"material": material, "mesh": mesh, "solve": solve, "plot": plot, "report": report}

if __name__ == "__main__":
    if len(sys.argv) < 2 or sys.argv[1] not in COMMANDS:
        sys.exit(__doc__)
    try:
        COMMANDS[sys.argv[1]](*sys.argv[2:])
    except TypeError:
        sys.exit(__doc__)
