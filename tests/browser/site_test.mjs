// site_test.mjs MODULES ENGINE GENERATOR SHARE: generates sites and looks at every kind of their
// pages in headless Chromium. Ends with 1 and a line for each fault.
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import { createRequire } from "node:module";
import os from "node:os";
import path from "node:path";
import { pathToFileURL } from "node:url";

const [modules, engine, generator, share] = process.argv.slice(2).map((file) => path.resolve(file));
const require = createRequire(path.join(modules, "test.js"));
const { chromium } = require("playwright-core");
const axe = fs.readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");

const WIDTHS = [390, 1280];
const work = fs.mkdtempSync(path.join(os.tmpdir(), "vantrel3-browser-"));
const faults = [];
let checks = 0;

function expect(holds, what) {
  ++checks;
  if (!holds) faults.push(what);
}

// --- sites ----------------------------------------------------------------------------------

// A site from a log (a text, or arguments of the generator), with other settings than the shipped.
function makeSite(name, log, settings = {}, templates = {}) {
  const folder = path.join(work, name);
  fs.cpSync(path.join(share, "templates"), path.join(folder, "templates"), { recursive: true });
  for (const [file, text] of Object.entries(templates)) {
    fs.writeFileSync(path.join(folder, "templates", file), text);
  }
  const lines = fs.readFileSync(path.join(share, "morvane.cfg"), "latin1").split(/\r?\n/);
  const changed = { players_min_time: 0, players_min_games: 0, players_min_kills: 0, ...settings };
  for (const [key, value] of Object.entries(changed)) {
    const at = lines.findIndex((line) => line.startsWith(key + "="));
    if (at < 0) throw new Error("no setting " + key);
    lines[at] = `${key}=${value}`;
  }
  fs.writeFileSync(path.join(folder, "morvane.cfg"), lines.join("\n"), "latin1");
  const games = path.join(folder, "games.log");
  if (typeof log === "string") fs.writeFileSync(games, log);
  else execFileSync(generator, [...log, games]);
  fs.copyFileSync(engine, path.join(folder, "morvane.exe"));
  execFileSync(path.join(folder, "morvane.exe"), { stdio: "ignore" });
  return path.join(folder, "output");
}

// One page of every kind: each page without a name in it, and of those of maps, games and players
// the first.
function pagesOf(site) {
  const taken = new Map();
  return fs.readdirSync(site).sort().filter((file) => {
    if (!file.endsWith(".html") || file === "index.html") return false;
    const kind = file.split("_")[0];
    taken.set(kind, (taken.get(kind) ?? 0) + 1);
    return taken.get(kind) === 1;
  });
}

const lines = (...texts) => texts.map((text) => `  0:00 ${text}\n`).join("");
const oneAlone = lines("InitGame: \\mapname\\q3dm17\\g_gametype\\0", "ClientConnect: 0",
  "ClientUserinfoChanged: 0 n\\^4A^1lone\\t\\0", "ClientBegin: 0", "Kill: 0 0 7: a killed a by MOD_ROCKET_SPLASH") +
  " 10:00 Exit: Timelimit hit.\n 10:00 ShutdownGame:\n";

const LIGHT = { bg_color: "#FFFFFF", text_color: "#202020" };
const FEW = { min_players: 0, min_time: 0, min_kills: 0 };
const sortingPage = `{{> _head}}<h1>Sorting</h1><table class="sortable"><caption>Cells</caption>
<thead><tr><th scope="col" data-first="up">Rank</th><th scope="col" class="text">Name</th><th scope="col">Kills</th></tr></thead>
<tbody><tr><td>2</td><th scope="row">b10</th><td>9</td></tr><tr><td>–</td><th scope="row">b9</th><td>x</td></tr>
<tr><td>1</td><th scope="row">007</th><td data-sort="-3.5">much</td></tr><tr><td>10</td><th scope="row">Ä</th><td data-sort="">1</td></tr></tbody></table>{{> _foot}}`;

const sites = {
  dark: makeSite("dark", ["1999", "40"]),  // the log of the stage
  light: makeSite("light", ["1999", "4"], LIGHT),
  crowd: makeSite("crowd", ["crowd", "500", "700"]),
  alone: makeSite("alone", oneAlone, FEW),
  empty: makeSite("empty", ""),
  sorting: makeSite("sorting", oneAlone, { main_template0: "sorting" }, { "sorting.htmlt": sortingPage }),
};

// --- every kind of page ---------------------------------------------------------------------

const browser = await chromium.launch({
  executablePath: "/usr/bin/chromium",
  // The pages are our own; as root, and in a container, Chromium's sandbox cannot be used.
  args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync"],
});

const address = (site, file) => pathToFileURL(path.join(site, file)).href;

async function look(name, site, file, width) {
  const where = `${name}/${file} at ${width}`;
  const page = await browser.newPage({ viewport: { width, height: 900 } });
  page.on("console", (message) => expect(false, `${where}: console: ${message.text()}`));
  page.on("pageerror", (error) => expect(false, `${where}: ${error.message}`));
  page.on("request", (request) => expect(request.url().startsWith(pathToFileURL(site).href),
    `${where} asks for ${request.url()}`));
  page.on("requestfailed", (request) => expect(false, `${where}: no ${request.url()}`));
  await page.goto(address(site, file));
  const over = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
  expect(over <= 0, `${where} is ${over} pixels too wide`);
  await page.evaluate(axe);
  const { violations, passes } = await page.evaluate(() => window.axe.run({ preload: false }));
  expect(passes.length > 10, `${where}: axe looked at nothing`);
  for (const { id, impact, nodes } of violations) {
    expect(false, `${where}: axe: ${id} (${impact}), ${nodes.length} times: ${nodes[0].html}`);
  }
  await page.close();
}

// The first page leads on at once; as it stands it is seen only where that is switched off.
const still = fs.readFileSync(path.join(sites.dark, "index.html"), "utf8").replace(/<meta http-equiv="refresh"[^>]*>/, "");
fs.writeFileSync(path.join(sites.dark, "still.html"), still);

const looks = [];
for (const [name, site] of Object.entries(sites)) {
  // Every kind in one site; of the others what is other there.
  const files = name === "crowd" ? ["gamelist.html", "gamelist-1.html", "playerrank-2.html"]
    : name === "dark" ? pagesOf(site)
    : pagesOf(site).filter((file) => /^(stats|allkill|lastg|player_|game_|map_|sorting)/.test(file));
  const widths = name === "dark" || name === "crowd" ? WIDTHS : [1280];
  for (const file of files) for (const width of widths) looks.push([name, site, file, width]);
}
async function lookOn() {
  for (let next = looks.pop(); next; next = looks.pop()) await look(...next);
}
await Promise.all([lookOn(), lookOn()]);

// --- sorting, by keyboard -------------------------------------------------------------------

async function column(page, index) {
  return page.$$eval("table.sortable tbody tr", (rows, at) => rows.map((row) => row.cells[at].textContent), index);
}

// Presses Tab until what has the focus is what is looked for.
async function tabTo(page, what, isThere) {
  for (let presses = 0; presses < 300; ++presses) {
    await page.keyboard.press("Tab");
    if (await page.evaluate(isThere, what)) return;
  }
  expect(false, `${what} cannot be reached by keyboard`);
}

async function sortByKeyboard() {
  const page = await browser.newPage();
  await page.goto(address(sites.sorting, "sorting.html"));
  const cases = [
    // The heading, the key that presses it, and the column's order after the first and second time.
    ["Rank", "Enter", ["1", "2", "10", "–"], ["10", "2", "1", "–"]],
    ["Name", "Space", ["007", "Ä", "b9", "b10"], ["b10", "b9", "Ä", "007"]],
    ["Kills", "Enter", ["9", "much", "x", "1"], ["much", "9", "x", "1"]],
  ];
  for (const [index, [heading, key, first, second]] of cases.entries()) {
    await tabTo(page, heading, (text) => document.activeElement.textContent === text);
    for (const wanted of [first, second]) {
      await page.keyboard.press(key);
      const order = await column(page, index);
      expect(order.join() === wanted.join(), `sorted by ${heading}: ${order} instead of ${wanted}`);
    }
    const sorted = await page.$$eval("th[aria-sort]", (heads) => heads.map((head) => head.textContent));
    expect(sorted.join() === heading, `sorted by ${heading} is said of ${sorted}`);
  }
  await page.close();
}
await sortByKeyboard();

// --- finding and switching, by keyboard -----------------------------------------------------

async function findByKeyboard() {
  const page = await browser.newPage();
  await page.goto(address(sites.dark, "playerrank.html"));
  const shown = () => page.$$eval("table[data-find] tbody tr", (rows) =>
    rows.filter((row) => row.checkVisibility()).map((row) => row.querySelector("th").textContent.trim()));
  const all = await shown();
  await tabTo(page, "input[type=search]", (input) => document.activeElement.matches(input));
  const cases = [["kArM", ["Karmina"]], ["nobody of this name", []], ["", all]];
  for (const [typed, wanted] of cases) {
    await page.keyboard.press("Control+A");
    await page.keyboard.press("Delete");
    await page.keyboard.type(typed);
    const found = await shown();
    expect(found.join() === wanted.join(), `found by "${typed}": ${found} instead of ${wanted}`);
  }
  expect(all.length > 10, "too few players to find one among");
  await page.close();
}
await findByKeyboard();

// Switches are radio buttons, so they work without script too.
async function switchByKeyboard(javaScriptEnabled) {
  const context = await browser.newContext({ javaScriptEnabled });
  const cases = [
    ["playerrank.html", [".span-all", ".span-late"]],
    ["morekilltables.html", [".matrix-0", ".matrix-1", ".matrix-2"]],
  ];
  for (const [file, parts] of cases) {
    const page = await context.newPage();
    await page.goto(address(sites.dark, file));
    const where = `${file} ${javaScriptEnabled ? "with" : "without"} script`;
    await page.locator("input.switch").first().focus();
    for (const part of parts) {
      const open = [];
      for (const other of parts) if (await page.locator(other).first().isVisible()) open.push(other);
      expect(open.join() === part, `${where} shows ${open} instead of ${part}`);
      await page.keyboard.press("ArrowRight");
    }
    await page.close();
  }
  await context.close();
}
await switchByKeyboard(true);
await switchByKeyboard(false);

// --- without script -------------------------------------------------------------------------

const context = await browser.newContext({ javaScriptEnabled: false });
const plain = await context.newPage();
await plain.goto(address(sites.dark, "index.html"));
await plain.waitForURL(address(sites.dark, "stats.html"));
expect(await plain.locator("table tbody tr").first().isVisible(), "no rows without script");
expect(await plain.locator("th button").count() === 0, "buttons without script");
await context.close();

await browser.close();
fs.rmSync(work, { recursive: true });
for (const fault of faults) console.log(fault);
console.log(`${checks} checks, ${faults.length} faults`);
process.exit(faults.length === 0 && checks > 100 ? 0 : 1);
