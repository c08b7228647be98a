#pragma once

/// How the report looks: on paper, on a phone, by day and by night. It names no file and no font
/// that would have to be fetched.
inline constexpr char kReportStyle[] = R"css(
:root {
  color-scheme: light dark;
  --paper: #fcfcfa; --ink: #1a2328; --quiet: #566168; --rule: #d8dcd8; --faint: #f1f3ef;
  --bar: #2c6690; --broken: #b8482c; --rest: #7f8b90;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #13181c; --ink: #e6e9e6; --quiet: #a2adb3; --rule: #343d43; --faint: #1c2329;
    --bar: #6aa7d4; --broken: #ee8c6c; --rest: #6b777d;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 3rem clamp(1rem, 4vw, 3rem); max-width: 72rem;
  background: var(--paper); color: var(--ink);
  font: 1rem/1.55 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", sans-serif;
  font-variant-numeric: tabular-nums; overflow-wrap: anywhere;
}
h1, h2, h3, .facts dd {
  font-family: Charter, "Bitstream Charter", Cambria, Georgia, "Noto Serif", "DejaVu Serif", serif;
  font-weight: 500; line-height: 1.15; text-wrap: balance;
}
h1 { margin: 0 0 1rem; font-size: clamp(2.1rem, 6vw, 3.2rem); letter-spacing: -0.015em; }
h2 { margin: 0 0 1.2rem; font-size: 1.6rem; }
h3 { margin: 0 0 .5rem; font-size: 1.1rem; }
p { max-width: 44rem; margin: 0 0 .8rem; }
code { font: .9em ui-monospace, "DejaVu Sans Mono", monospace; }
.lead { font-size: 1.15rem; }
.made, footer, caption, figcaption, .facts small, summary span { color: var(--quiet); }
section { margin-top: 3.5rem; padding-top: 1.2rem; border-top: 1px solid var(--rule); }
footer { margin-top: 4rem; padding-top: 1rem; border-top: 1px solid var(--rule); font-size: .9rem; }
.facts {
  display: grid; grid-template-columns: repeat(auto-fit, minmax(9.5rem, 1fr));
  gap: 1.8rem 1.5rem; margin: 0 0 1.5rem;
}
.facts dt { font-size: .9rem; }
.facts dd { margin: .15rem 0 0; font-size: 2.1rem; }
.facts small {
  display: block; margin-top: .35rem; font: .85rem/1.35 system-ui, -apple-system, "Segoe UI",
  Roboto, "Noto Sans", sans-serif;
}
section > .table:has(.drawn) { max-width: 44rem; }
.pair { display: grid; grid-template-columns: minmax(0, 1fr); gap: 1rem 3.5rem; }
figure { margin: 0 0 1rem; }
figcaption { display: flex; flex-wrap: wrap; gap: .1rem 1.4rem; font-size: .9rem; }
.key::before {
  content: ""; display: inline-block; width: .75em; height: .75em; margin-right: .45em;
  background: var(--bar); print-color-adjust: exact;
}
.key.broken::before { background: var(--broken); }
svg { display: block; overflow: visible; print-color-adjust: exact; }
svg text { font-size: .8rem; fill: var(--quiet); text-anchor: middle; }
svg .value { fill: var(--ink); }
svg .scale { text-anchor: end; }
.columns { width: 100%; height: 230px; }
.columns.scaled { width: calc(100% - 3rem); margin-left: 3rem; }
.bar { fill: var(--bar); }
.bar.rest { fill: var(--rest); }
.bar.broken { fill: var(--broken); }
.grid { stroke: var(--rule); }
.base { stroke: var(--quiet); }
.row { width: 100%; height: .85rem; }
.table { overflow-x: auto; margin-bottom: 1.2rem; }
table { width: 100%; border-collapse: collapse; font-size: .92rem; }
caption { padding-bottom: .4rem; text-align: left; font-size: .9rem; }
th, td { padding: .38rem 1.1rem .38rem 0; text-align: left; vertical-align: baseline; }
th:last-child, td:last-child { padding-right: 0; }
thead th, thead td { border-bottom: 1px solid var(--quiet); font-weight: 600; vertical-align: bottom; }
tbody tr { border-bottom: 1px solid var(--rule); }
tbody th { font-weight: 400; }
thead th { overflow-wrap: normal; }
th.number, td.number { text-align: right; }
td.number, th.line, td.line { white-space: nowrap; }
tbody th { min-width: 10.5rem; }
tbody th.line { min-width: 0; }
td.drawn { width: 70%; }
.drawn + .number { padding-left: .6rem; }
details { border-bottom: 1px solid var(--rule); }
summary { padding: .45rem 0; cursor: pointer; }
summary:focus-visible { outline: 2px solid var(--bar); outline-offset: 2px; }
summary span { float: right; font-size: .9rem; }
details .table { margin: .3rem 0 1rem; padding: .6rem .8rem; background: var(--faint); }
@media (min-width: 56rem) {
  .pair { grid-template-columns: minmax(0, 1fr) minmax(0, 1fr); }
}
@media (max-width: 40rem) {
  body { padding-top: 1.6rem; }
  .spare { display: none; }
  table { font-size: .87rem; }
  th, td { padding-right: .6rem; }
  tbody th { min-width: 6.5rem; }
  tbody th.line { min-width: 6.4em; white-space: normal; }
  td.drawn { width: 50%; }
}
@media print {
  :root {
    --paper: #fff; --ink: #000; --quiet: #444; --rule: #bbb; --faint: #fff;
    --bar: #2c6690; --broken: #b8482c; --rest: #7f8b90;
  }
  body { max-width: none; padding: 0; font-size: 10pt; }
  section { margin-top: 2rem; }
  figure, tr, .facts div { break-inside: avoid; }
  h2, h3, caption { break-after: avoid; }
  details::details-content { content-visibility: visible; height: auto; }
}
)css";
