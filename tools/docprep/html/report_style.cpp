#include "html/report_style.h"

namespace docprep {

// Lengths are multiples of --s, a quarter of a line. Each colour has a name and two values, for light and dark.
const char* const kReportStyle = R"css(
:root {
  color-scheme: light dark;
  --s: 0.375rem;
  --ground: #f4f5f7; --sheet: #ffffff; --ink: #191c22; --soft: #5b6472; --rule: #dde1e7; --track: #e8ebf0;
  --accent: #0f6e62; --accent-soft: #a9d3cc; --warn: #b4432d; --mark: #c2570c;
}
@media (prefers-color-scheme: dark) {
  :root {
    --ground: #0f1216; --sheet: #171b20; --ink: #e6e9ee; --soft: #98a2b0; --rule: #2a3038; --track: #242a32;
    --accent: #52c7b5; --accent-soft: #1f5a53; --warn: #f08a72; --mark: #f2a65a;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0; background: var(--ground); color: var(--ink);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "DejaVu Sans", sans-serif;
  font-variant-numeric: tabular-nums; -webkit-text-size-adjust: 100%;
}
main, header, footer { max-width: 72rem; margin: 0 auto; padding: 0 calc(4 * var(--s)); }
h1, h2, h3, p, dl, dd, table, figure { margin: 0; }
h1 { font-size: 1.75rem; line-height: 1.2; font-weight: 650; letter-spacing: -0.015em; overflow-wrap: anywhere; }
h2 { font-size: 1.1875rem; line-height: 1.3; font-weight: 650; letter-spacing: -0.005em; }
h3 { font-size: 0.8125rem; font-weight: 600; color: var(--soft); }
header { padding-top: calc(8 * var(--s)); padding-bottom: calc(6 * var(--s)); }
.program { font-size: 0.8125rem; color: var(--soft); margin-bottom: var(--s); }

.figures { display: flex; flex-wrap: wrap; gap: calc(3 * var(--s)) calc(8 * var(--s)); margin-top: calc(5 * var(--s)); }
.figures dt { font-size: 0.8125rem; color: var(--soft); }
.figures dd { font-size: 1.1875rem; line-height: 1.3; font-weight: 600; }

section {
  display: grid; grid-template-columns: minmax(0, 19rem) minmax(0, 1fr); gap: calc(5 * var(--s)) calc(8 * var(--s));
  padding: calc(6 * var(--s)); margin-bottom: calc(4 * var(--s));
  background: var(--sheet); border: 1px solid var(--rule); border-radius: 0.75rem;
}
.number {
  display: inline-block; min-width: 1.75em; margin-right: 0.25em; color: var(--accent); font-weight: 600;
}
.about p { margin-top: calc(2 * var(--s)); color: var(--soft); }
.show { display: grid; gap: calc(4 * var(--s)); align-content: start; }

.facts { margin-top: calc(4 * var(--s)); font-size: 0.875rem; }
.facts div { display: flex; justify-content: space-between; gap: calc(4 * var(--s)); padding: var(--s) 0;
  border-top: 1px solid var(--rule); }
.facts dt { color: var(--soft); }
.facts dd { text-align: right; overflow-wrap: anywhere; }

.place { aspect-ratio: var(--w) / var(--h); max-width: min(100%, calc(34rem * var(--w) / var(--h))); width: 100%; }
.view {
  display: block; position: static; inset: auto; margin: 0; padding: 0; border: 0; width: auto; height: auto;
  max-width: none; max-height: none; overflow: visible; background: none; color: inherit;
}
.view button {
  display: block; position: relative; width: 100%; padding: 0; margin: 0; border: 0; background: var(--track);
  border-radius: 0.375rem; overflow: hidden; cursor: zoom-in; box-shadow: 0 0 0 1px var(--rule); font: inherit;
}
.view button:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
.view img { display: block; width: 100%; height: auto; aspect-ratio: var(--w) / var(--h); }
.view svg { position: absolute; inset: 0; width: 100%; height: 100%; }
.view:popover-open {
  position: fixed; inset: 0; margin: auto; width: fit-content; height: fit-content;
  max-width: 100vw; max-height: 100vh; overflow: auto;
}
.view:popover-open button {
  width: max(calc(1px * var(--w)), min(96vw, calc(94vh * var(--w) / var(--h)))); cursor: zoom-out; border-radius: 0;
}
.view::backdrop { background: rgb(8 10 13 / 0.82); }
.line { fill: none; stroke-width: 2px; vector-effect: non-scaling-stroke; stroke-linejoin: round; }
.outline { stroke: #0f9d8a; stroke-width: 3px; }
.outside { fill: rgb(15 18 22 / 0.45); }
.baseline { stroke-width: 1.5px; }
.hull { fill-opacity: 0.22; stroke: none; }
.least { stroke-width: 0.75px; stroke-dasharray: 4 3; }
.view:popover-open .baseline { stroke-width: 2.5px; }
.view:popover-open .least { stroke-width: 1.25px; }

.key { display: flex; flex-wrap: wrap; gap: var(--s) calc(5 * var(--s)); font-size: 0.875rem; color: var(--soft);
  list-style: none; margin: 0; padding: 0; }
.key i { display: inline-block; width: 0.75em; height: 0.75em; margin-right: 0.5em; border-radius: 2px;
  background: var(--c); box-shadow: 0 0 0 1px var(--rule); }
.key .stroke { height: 3px; width: 1.5em; vertical-align: 0.25em; box-shadow: none; }

.chart { position: relative; padding-top: calc(5 * var(--s)); font-size: 0.8125rem; color: var(--soft); }
.chart svg { display: block; width: 100%; height: 14rem; border-bottom: 1px solid var(--soft); }
.chart .print { fill: var(--ink); }
.chart .paper { fill: var(--accent-soft); }
.chart .limit { position: absolute; top: 0; bottom: 1.5em; left: var(--at); border-left: 2px solid var(--mark);
  color: var(--mark); font-weight: 600; line-height: 1.2; }
.chart .limit span { position: absolute; left: calc(1.5 * var(--s)); white-space: nowrap; }
.chart .limit.late span { left: auto; right: calc(1.5 * var(--s)); }
.axis { position: relative; display: flex; justify-content: space-between; height: 1.5em; }
.axis .zero { position: absolute; left: var(--at); transform: translateX(-50%); }

.scale { position: relative; padding: calc(4 * var(--s)) 0 1.5em; font-size: 0.8125rem; color: var(--soft); }
.scale .value { position: absolute; top: 0; left: var(--at); transform: translateX(-50%); color: var(--ink);
  font-weight: 600; }
.scale .track { height: 0.5rem; border-radius: 0.25rem; background: var(--track); overflow: hidden; }
.scale .track i { display: block; height: 100%; width: var(--at); background: var(--accent); }
.scale .track i.bad { background: var(--warn); }
.scale .limit { position: absolute; top: calc(4 * var(--s) - 0.25rem); height: 1rem; left: var(--at);
  border-left: 2px solid var(--mark); }
.scale .limit span { position: absolute; top: 1rem; transform: translateX(-50%); white-space: nowrap; }

table { width: 100%; border-collapse: collapse; font-size: 0.875rem; }
th, td { padding: var(--s) 0; border-top: 1px solid var(--rule); text-align: left; font-weight: 400; vertical-align: baseline; }
tr:first-child th, tr:first-child td { border-top: 0; }
th { padding-right: calc(4 * var(--s)); white-space: nowrap; }
td.amount { padding-left: calc(4 * var(--s)); text-align: right; white-space: nowrap; }
td.bar { width: 100%; }
td.bar i { display: block; height: 0.5rem; border-radius: 0.25rem; background: var(--accent);
  width: max(2px, calc(100% * var(--share))); }
tr.less i { background: var(--accent-soft); }
tr.sum i { display: none; }
tr.sum th, tr.sum td { border-top: 1px solid var(--soft); font-weight: 600; }
table.words td { text-align: right; overflow-wrap: anywhere; }

.last { grid-template-columns: repeat(3, minmax(0, 1fr)); }
.last h3 { margin-bottom: var(--s); }
footer { padding-bottom: calc(8 * var(--s)); font-size: 0.8125rem; color: var(--soft); }

@media (max-width: 52rem) {
  section, .last { grid-template-columns: minmax(0, 1fr); padding: calc(4 * var(--s)); }
  main, header, footer { padding-left: calc(3 * var(--s)); padding-right: calc(3 * var(--s)); }
  h1 { font-size: 1.375rem; }
  th { white-space: normal; min-width: 7.5rem; }
  .chart svg { height: 10rem; }
}
@media print {
  section { break-inside: avoid; }
}
)css";

}  // namespace docprep
