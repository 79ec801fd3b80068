// Sorts a table by the column whose heading is clicked; a second click turns the order round.
// Without this script the tables stay as they are written.
"use strict";

function sortKey(row, column) {
  const cell = row.cells[column];
  const text = (cell.dataset.sort ?? cell.textContent).trim();
  const number = Number.parseFloat(text);
  return Number.isNaN(number) || !/^[-+]?[\d.]+\s*%?$/.test(text) ? text : number;
}

function compare(left, right) {
  if (typeof left === "number" && typeof right === "number") return left - right;
  if (typeof left !== typeof right) return typeof left === "number" ? 1 : -1;
  return left.localeCompare(right, undefined, { numeric: true, sensitivity: "base" });
}

function sortBy(table, heading) {
  const column = heading.cellIndex;
  const body = table.tBodies[0];
  const rows = Array.from(body.rows, (row) => ({ row, key: sortKey(row, column) }));
  const numbers = rows.some((entry) => typeof entry.key === "number");
  const before = heading.getAttribute("aria-sort");
  // Figures begin with the greatest, names with A; a rank is best when it is small.
  const first = numbers && column > 0 ? "descending" : "ascending";
  const order = before === null ? first : before === "ascending" ? "descending" : "ascending";
  const sign = order === "ascending" ? 1 : -1;
  rows.sort((left, right) => sign * compare(left.key, right.key));
  for (const other of table.tHead.rows[0].cells) other.removeAttribute("aria-sort");
  heading.setAttribute("aria-sort", order);
  body.append(...rows.map((entry) => entry.row));
}

for (const table of document.querySelectorAll("table.sortable")) {
  for (const heading of table.tHead.rows[0].cells) {
    const button = document.createElement("button");
    button.type = "button";
    button.append(...heading.childNodes);
    button.addEventListener("click", () => sortBy(table, heading));
    heading.append(button);
  }
}
