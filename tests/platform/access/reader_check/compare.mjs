// Compares an Access file, as the package mdb-reader reads it, with what is expected.
//
//   node compare.mjs FILE EXPECTED.json
//
// EXPECTED has for each table its columns and rows. A cell is null, true, false, a number, a
// text, {"money": ten-thousandths} or {"moment": days since 30 December 1899}. The order of the
// rows does not count. Prints the differences; exit status 1 when there are any.

import { readFileSync } from "node:fs";
import MDBReader from "mdb-reader";

const kDayOf1970 = 25569;
const kMillisecondsADay = 86400000;

/** "-12.34" as a whole number of ten-thousandths. */
function unitsOf(money) {
  const [whole, fraction = ""] = money.replace("-", "").split(".");
  return (money.startsWith("-") ? "-" : "") + BigInt(whole + fraction.padEnd(4, "0")).toString();
}

function seen(value, type) {
  if (value === null || value === undefined) return null;
  if (type === "currency") return "money " + unitsOf(value);
  if (value instanceof Date) return "moment " + value.getTime();
  return value;
}

function expected(cell) {
  if (cell === null || typeof cell !== "object") return cell;
  if ("money" in cell) return "money " + cell.money;
  return "moment " + Math.round((cell.moment - kDayOf1970) * kMillisecondsADay);
}

/** The two rows from a little before the first difference on. */
function differing(theirs, ours) {
  let at = 0;
  while (at < theirs.length && theirs[at] === ours[at]) ++at;
  const shown = (row) => `${row.length} characters, ...${row.substring(at - 60, at + 60)}...`;
  return `theirs ${shown(theirs)}\n  ours ${shown(ours)}`;
}

function sorted(rows) {
  return rows.map((row) => JSON.stringify(row)).sort();
}

const [file, expectedFile] = process.argv.slice(2);
const tables = JSON.parse(readFileSync(expectedFile, "utf8"));
const reader = new MDBReader(readFileSync(file));
const faults = [];

const names = reader.getTableNames().sort();
if (JSON.stringify(names) !== JSON.stringify(Object.keys(tables).sort())) faults.push(`tables: ${names}`);

for (const [name, { columns, rows }] of Object.entries(tables)) {
  const table = reader.getTable(name);
  const types = new Map(table.getColumns().map((column) => [column.name, column.type]));
  if ([...types.keys()].sort().join() !== [...columns].sort().join()) {
    faults.push(`${name}: columns ${[...types.keys()]}`);
    continue;
  }
  const theirs = sorted(table.getData().map((row) => columns.map((column) => seen(row[column], types.get(column)))));
  const ours = sorted(rows.map((row) => row.map(expected)));
  if (theirs.length !== ours.length) faults.push(`${name}: ${theirs.length} rows instead of ${ours.length}`);
  const at = theirs.findIndex((row, i) => row !== ours[i]);
  if (at >= 0) faults.push(`${name}: ${differing(theirs[at], ours[at] ?? "")}`);
}

if (faults.length > 0) console.log(faults.join("\n"));
process.exit(faults.length > 0 ? 1 : 0);
