#!/usr/bin/env bash
# SPDX-License-Identifier: BSD-3-Clause
# Simulates a cooling fin in steps and lets the report carry how it came about:
#
#     examples/make-example.sh FOLDER
#
# makes FOLDER/cooling-fin.pdf, a PDF with three steps. The first of them used
# material.lorix, which has a history of two steps of its own. People, hosts and
# times are made up and the same on every run.
set -eu
examples=$(cd "$(dirname "$0")" && pwd)
out=${1:?usage: make-example.sh FOLDER}
mkdir -p "$out/work"
cd "$out/work"
cp "$examples"/cooling-fin/{fin.inp,conductivity-measured.csv} .

python=${PYTHON:-python3}
fin() { "$python" "$examples/cooling-fin/fin.py" "$@"; }
# add SECONDS: adds a step at that time since 1970; its files are as old.
add() {
    touch -d "@$1" -- *
    SOURCE_DATE_EPOCH=$1 "$python" "$examples/../tools/lorixadd.py" --quiet --stdin
}

# A laboratory measures the material, an engineer fits a line through it: a
# small document with a history of its own.
rm -f material.lorix
add 1772443800 << 'END' # 2026-03-02 09:30
-O material.lorix
--firstpage "Alloy AC-4: thermal conductivity"
--readme "Measured by the hot disk method, six temperatures from 21 to 95 degrees Celsius."
-s title "Measure the conductivity" -s description "Hot disk, six temperatures, one sample"
-s user "Ines Okafor" -s host lab-bench-2 -s tool "hot disk" -s command "run series AC-4"
-U sample AC-4/17 -U sensor.radius 6.4 --step-unit sensor.radius mm
-o conductivity-measured.csv -a filetype text/csv -a description "Conductivity by temperature"
END
fin material conductivity-measured.csv material.csv
add 1772525700 << 'END' # 2026-03-03 08:15
-A material.lorix
-s title "Fit a straight line" -s description "Least squares over all six points"
-s user "Jonas Weber" -s host ws-14 -s tool fin.py
-s command "fin.py material conductivity-measured.csv material.csv"
-i conductivity-measured.csv -a filetype text/csv -f no-embed
-o material.csv -a filetype text/csv -a description "Conductivity and its slope"
END

# The simulation: which mesh is fine enough, the solution, the report on it.
rm -f mesh-study.csv
for cells in 10 20 40; do
    fin mesh fin.inp material.csv $cells mesh-study.csv
done
fin solve fin.inp material.csv mesh.csv field.csv result.csv
fin plot field.csv profile.svg
fin report fin.inp result.csv field.csv mesh-study.csv report.pdf
cp report.pdf ../cooling-fin.pdf

add 1772540400 << 'END' # 2026-03-03 12:20
-A ../cooling-fin.pdf
-s title "Mesh study" -s description "Tip temperature with 10, 20 and 40 cells along the fin"
-s comment "40 cells are enough: the tip moves by less than 0.02 degrees"
-s user "Jonas Weber" -s host ws-14 -s tool fin.py
-s command "fin.py mesh fin.inp material.csv 40 mesh-study.csv"
-i fin.inp -a filetype text/plain -a description "What the solver reads"
-i material.lorix -a filetype application/pdf -a description "The material, with its history"
-o mesh-study.csv -a filetype text/csv -a description "Results by number of cells" -u cells 40
END
add 1772618700 << 'END' # 2026-03-04 10:05
-A ../cooling-fin.pdf
-s title "Solve for the steady state" -s description "Temperature field of the fin"
-s user "Mei Tanaka" -s host cluster-07 -s tool fin.py
-s command "fin.py solve fin.inp material.csv mesh.csv field.csv result.csv"
-U tolerance 1e-7 --step-unit tolerance K -U cells.along 40
-i fin.inp -a filetype text/plain -f compress
-o mesh.csv -a filetype text/csv -a description "Middle of every cell" -f compress
-o field.csv -a filetype text/csv -a description "Temperature of every cell" -f compress
-o result.csv -a filetype text/csv -a description "Tip temperature and heat flow"
END
add 1772705520 << 'END' # 2026-03-05 10:12
-A ../cooling-fin.pdf
-s title "Report" -s description "Plot of the profile and the page that carries all this"
-s user "Mei Tanaka" -s host ws-09 -s tool fin.py
-s command "fin.py report fin.inp result.csv field.csv mesh-study.csv report.pdf"
-i result.csv -a filetype text/csv -f no-embed
-o profile.svg -a filetype image/svg+xml -a description "Temperature along the fin" -f compress
-d title "Temperature of a cooling fin" -d author "Mei Tanaka"
END
echo "made $out/cooling-fin.pdf"
