// Sorts a table by the column whose heading is clicked; a second click turns the order round.
// Without this script the tables stay as they are written.
"use strict";

const names = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });

// What a row is sorted by: a number, a text, or null for a cell that says nothing.
function sortKey(row, column, ofTexts) {
  const cell = row.cells[column];
  const isText = cell.dataset.sort === undefined && (ofTexts || cell.tagName === "TH");
  const text = (cell.dataset.sort ?? cell.textContent).trim();
  if (text === "" || text === "–") return null;
  return !isText && /^[-+]?[\d.]+\s*%?$/.test(text) ? Number.parseFloat(text) : text;
}

// Numbers come before texts, and both before nothing, whichever way they are sorted.
function compare(left, right, sign) {
  const kind = (key) => (key === null ? 2 : typeof key === "string" ? 1 : 0);
  if (kind(left) !== kind(right)) return kind(left) - kind(right);
  if (left === null) return 0;
  return sign * (typeof left === "number" ? left - right : names.compare(left, right));
}

function sortBy(table, heading) {
  const column = heading.cellIndex;
  const ofTexts = heading.classList.contains("text");
  const body = table.tBodies[0];
  const rows = Array.from(body.rows, (row) => ({ row, key: sortKey(row, column, ofTexts) }));
  const before = heading.getAttribute("aria-sort");
  // Figures begin with the greatest, names with A, ranks and places with the first.
  const numbers = rows.some((entry) => typeof entry.key === "number");
  const first = numbers && heading.dataset.first !== "up" ? "descending" : "ascending";
  const order = before === null ? first : before === "ascending" ? "descending" : "ascending";
  const sign = order === "ascending" ? 1 : -1;
  rows.sort((left, right) => compare(left.key, right.key, sign));
  for (const other of table.tHead.rows[0].cells) other.removeAttribute("aria-sort");
  heading.setAttribute("aria-sort", order);
  body.append(...rows.map((entry) => entry.row));
}

// A box above a table that leaves only the rows whose names hold what is typed.
function addFind(table) {
  const label = document.createElement("label");
  const input = document.createElement("input");
  input.type = "search";
  label.className = "find";
  label.append(table.dataset.find + " ", input);
  input.addEventListener("input", () => {
    const wanted = input.value.trim().toLowerCase();
    for (const row of table.tBodies[0].rows) {
      row.hidden = !row.querySelector("th").textContent.toLowerCase().includes(wanted);
    }
  });
  table.parentElement.before(label);
}

for (const table of document.querySelectorAll("table[data-find]")) addFind(table);

for (const table of document.querySelectorAll("table.sortable")) {
  for (const heading of table.tHead.rows[0].cells) {
    const button = document.createElement("button");
    button.type = "button";
    button.append(...heading.childNodes);
    button.addEventListener("click", () => sortBy(table, heading));
    heading.append(button);
  }
}
