#!/usr/bin/env node
// Bakes the icon library components/icons from the Tabler icon set (npm package
// @tabler/icons, MIT): every token below becomes white pictures whose alpha is the
// coverage, at the size tiers 56, 24 and 22, the outlined form as state "off" and the
// filled form as state "on" where the set has one. Writes
//   components/icons/<tier>/<name>_off.png, <name>_on.png
//   components/icons/index.json, components/icons/LICENSE
//   templates/ui_blocks/blocks/_icons.json (the published list of allowed tokens)
// Needs npm (registry access) and rsvg-convert (Debian: librsvg2-bin).
// Usage: node scripts/bake_icons.mjs [--version X.Y.Z]
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

const REPO = path.resolve(path.dirname(fileURLToPath(import.meta.url)), "..");
const OUT = path.join(REPO, "components", "icons");
const PUBLISHED = path.join(REPO, "templates", "ui_blocks", "blocks", "_icons.json");
const TIERS = [56, 24, 22];
let VERSION = "3.51.0";
for (let i = 2; i < process.argv.length; i++) if (process.argv[i] === "--version") VERSION = process.argv[++i];

// [name, icon of the set, category, ...aliases]. The name is the semantic token and
// the picture's file name; aliases are further tokens for the same picture.
const TABLE = [
  // status and feedback
  ["info", "info-circle", "status"],
  ["check", "check", "status", "ok", "done"],
  ["warning", "alert-triangle", "status", "warn"],
  ["error", "alert-circle", "status", "danger"],
  ["success", "circle-check", "status"],
  ["fail", "circle-x", "status"],
  ["close", "x", "status", "cancel"],
  ["help", "help-circle", "status", "question"],
  ["ban", "ban", "status", "forbidden"],
  ["loader", "loader-2", "status", "loading"],
  ["refresh", "refresh", "status", "sync", "reload"],
  ["history", "history", "status"],
  // navigation
  ["arrow-left", "arrow-left", "navigation", "back"],
  ["arrow-right", "arrow-right", "navigation"],
  ["arrow-up", "arrow-up", "navigation"],
  ["arrow-down", "arrow-down", "navigation"],
  ["chevron-left", "chevron-left", "navigation"],
  ["chevron-right", "chevron-right", "navigation", "forward"],
  ["chevron-up", "chevron-up", "navigation"],
  ["chevron-down", "chevron-down", "navigation", "expand"],
  ["more", "dots", "navigation"],
  ["more-vertical", "dots-vertical", "navigation"],
  ["menu", "menu-2", "navigation"],
  ["home", "home", "navigation"],
  ["apps", "apps", "navigation"],
  ["grid", "layout-grid", "navigation"],
  ["dashboard", "layout-dashboard", "navigation"],
  ["list", "list", "navigation"],
  ["list-details", "list-details", "navigation"],
  ["external-link", "external-link", "navigation"],
  ["maximize", "maximize", "navigation", "fullscreen"],
  ["minimize", "minimize", "navigation"],
  ["login", "login", "navigation"],
  ["logout", "logout", "navigation", "exit"],
  // actions
  ["search", "search", "action"],
  ["plus", "plus", "action", "add"],
  ["minus", "minus", "action", "remove"],
  ["trash", "trash", "action", "delete"],
  ["edit", "pencil", "action"],
  ["copy", "copy", "action"],
  ["share", "share", "action"],
  ["download", "download", "action"],
  ["upload", "upload", "action"],
  ["save", "device-floppy", "action"],
  ["filter", "filter", "action"],
  ["sort", "arrows-sort", "action"],
  ["sort-ascending", "sort-ascending", "action"],
  ["sort-descending", "sort-descending", "action"],
  ["link", "link", "action"],
  ["send", "send", "action"],
  ["zoom-in", "zoom-in", "action"],
  ["zoom-out", "zoom-out", "action"],
  ["rotate", "rotate-clockwise", "action"],
  ["crop", "crop", "action"],
  ["brush", "brush", "action"],
  ["palette", "palette", "action", "theme"],
  ["scan", "scan", "action"],
  ["qrcode", "qrcode", "action"],
  ["printer", "printer", "action"],
  // settings and system
  ["settings", "settings", "system", "gear"],
  ["adjustments", "adjustments", "system"],
  ["sliders", "adjustments-horizontal", "system"],
  ["toggle", "toggle-right", "system", "switch"],
  ["power", "power", "system"],
  ["lock", "lock", "system"],
  ["unlock", "lock-open", "system"],
  ["key", "key", "system", "password"],
  ["fingerprint", "fingerprint", "system"],
  ["shield", "shield", "system", "security"],
  ["shield-check", "shield-check", "system"],
  ["eye", "eye", "system", "show"],
  ["eye-off", "eye-off", "system", "hide"],
  ["user", "user", "system", "account", "profile"],
  ["users", "users", "system"],
  ["language", "language", "system"],
  ["globe", "world", "system", "world"],
  ["keyboard", "keyboard", "system"],
  ["accessibility", "accessible", "system"],
  ["database", "database", "system", "storage"],
  ["server", "server", "system"],
  ["cpu", "cpu", "system", "chip"],
  ["update", "cloud-download", "system"],
  ["bell", "bell", "system", "notification"],
  ["bell-off", "bell-off", "system"],
  ["alarm", "alarm", "system"],
  ["alarm-off", "alarm-off", "system"],
  ["calendar", "calendar", "system", "date"],
  ["calendar-event", "calendar-event", "system"],
  ["clock", "clock", "system", "time"],
  ["timer", "hourglass", "system", "hourglass"],
  ["stopwatch", "stopwatch", "system"],
  // sound and display
  ["volume", "volume", "sound", "volume-high", "sound"],
  ["volume-low", "volume-2", "sound"],
  ["volume-off", "volume-3", "sound", "mute"],
  ["microphone", "microphone", "sound", "mic"],
  ["microphone-off", "microphone-off", "sound", "mic-off"],
  ["headphones", "headphones", "sound"],
  ["music", "music", "sound"],
  ["brightness", "brightness-up", "display", "brightness-up"],
  ["brightness-down", "brightness-down", "display"],
  ["sun", "sun", "display", "day", "light-mode"],
  ["moon", "moon", "display", "night", "dark-mode"],
  ["photo", "photo", "display", "image", "picture", "gallery"],
  ["camera", "camera", "display"],
  ["video", "video", "display"],
  ["video-off", "video-off", "display"],
  ["cast", "cast", "display", "screen-cast"],
  // media controls
  ["play", "player-play", "media"],
  ["pause", "player-pause", "media"],
  ["stop", "player-stop", "media"],
  ["next", "player-skip-forward", "media", "skip-next"],
  ["previous", "player-skip-back", "media", "skip-previous"],
  ["record", "player-record", "media"],
  ["repeat", "repeat", "media", "loop"],
  ["shuffle", "arrows-shuffle", "media"],
  // connectivity
  ["wifi", "wifi", "connectivity", "wlan"],
  ["wifi-off", "wifi-off", "connectivity"],
  ["wifi-weak", "wifi-2", "connectivity"],
  ["bluetooth", "bluetooth", "connectivity", "bt"],
  ["bluetooth-off", "bluetooth-off", "connectivity"],
  ["bluetooth-connected", "bluetooth-connected", "connectivity"],
  ["signal", "antenna-bars-5", "connectivity", "cellular"],
  ["network", "network", "connectivity", "ethernet", "lan"],
  ["router", "router", "connectivity"],
  ["hotspot", "access-point", "connectivity", "access-point"],
  ["nfc", "nfc", "connectivity"],
  ["usb", "usb", "connectivity"],
  ["cloud", "cloud", "connectivity"],
  ["cloud-upload", "cloud-upload", "connectivity"],
  ["airplane", "plane", "connectivity", "flight-mode"],
  ["location", "map-pin", "connectivity", "gps", "pin"],
  ["map", "map", "connectivity"],
  ["my-location", "current-location", "connectivity"],
  // power
  ["battery", "battery", "power"],
  ["battery-full", "battery-4", "power"],
  ["battery-low", "battery-1", "power"],
  ["battery-charging", "battery-charging", "power", "charging"],
  ["battery-off", "battery-off", "power"],
  ["plug", "plug", "power"],
  ["bolt", "bolt", "power", "energy", "flash"],
  ["leaf", "leaf", "power", "eco"],
  // devices
  ["phone", "phone", "device", "call"],
  ["mobile", "device-mobile", "device"],
  ["tablet", "device-tablet", "device"],
  ["laptop", "device-laptop", "device"],
  ["desktop", "device-desktop", "device", "display", "monitor"],
  ["tv", "device-tv", "device"],
  ["watch", "device-watch", "device"],
  ["speaker", "device-speaker", "device"],
  ["gamepad", "device-gamepad-2", "device"],
  ["lamp", "lamp", "device"],
  ["bulb", "bulb", "device", "light"],
  ["bulb-off", "bulb-off", "device", "light-off"],
  ["fan", "propeller", "device"],
  ["air-conditioning", "air-conditioning", "device", "ac"],
  ["door", "door", "device"],
  ["car", "car", "device"],
  ["building", "building", "device"],
  // climate
  ["temperature", "temperature", "climate", "thermometer"],
  ["humidity", "droplet", "climate", "droplet", "water"],
  ["wind", "wind", "climate"],
  ["snowflake", "snowflake", "climate", "cool"],
  ["flame", "flame", "climate", "heat"],
  ["umbrella", "umbrella", "climate"],
  ["rain", "cloud-rain", "climate"],
  ["sunrise", "sunrise", "climate"],
  // communication and files
  ["mail", "mail", "communication", "email"],
  ["message", "message", "communication", "sms"],
  ["chat", "messages", "communication"],
  ["heart", "heart", "communication", "favorite"],
  ["star", "star", "communication"],
  ["bookmark", "bookmark", "communication"],
  ["flag", "flag", "communication"],
  ["tag", "tag", "communication"],
  ["gift", "gift", "communication"],
  ["trophy", "trophy", "communication"],
  ["folder", "folder", "file"],
  ["file", "file", "file", "document"],
  ["file-text", "file-text", "file"],
  // charts and commerce
  ["chart-bar", "chart-bar", "chart"],
  ["chart-line", "chart-line", "chart"],
  ["chart-pie", "chart-pie", "chart"],
  ["activity", "activity", "chart"],
  ["gauge", "gauge", "chart"],
  ["shopping-cart", "shopping-cart", "commerce", "cart"],
  ["credit-card", "credit-card", "commerce", "card"],
  ["wallet", "wallet", "commerce"],
];

function run(cmd, args, opts = {}) {
  return execFileSync(cmd, args, { stdio: ["ignore", "pipe", "inherit"], ...opts });
}

function writeJson(file, value) {
  fs.mkdirSync(path.dirname(file), { recursive: true });
  fs.writeFileSync(file, JSON.stringify(value, null, 2) + "\n");
}

const tmp = fs.mkdtempSync(path.join(os.tmpdir(), "bake_icons_"));
try {
  run("npm", ["pack", `@tabler/icons@${VERSION}`, "--pack-destination", tmp, "--silent"], { cwd: tmp });
  const tgz = fs.readdirSync(tmp).find((f) => f.endsWith(".tgz"));
  run("tar", ["xzf", path.join(tmp, tgz), "-C", tmp]);
  const pkg = path.join(tmp, "package");
  const svg = (form, icon) => path.join(pkg, "icons", form, icon + ".svg");

  for (const t of TIERS) fs.rmSync(path.join(OUT, String(t)), { recursive: true, force: true });
  const icons = {};
  const seen = new Set();
  for (const [name, icon, category, ...aliases] of TABLE) {
    if (!fs.existsSync(svg("outline", icon))) throw new Error(`the icon set has no outline icon ${icon}`);
    const filled = fs.existsSync(svg("filled", icon));
    const forms = filled ? [["off", "outline"], ["on", "filled"]] : [["off", "outline"]];
    for (const t of TIERS) {
      const dir = path.join(OUT, String(t));
      fs.mkdirSync(dir, { recursive: true });
      for (const [state, form] of forms) {
        // White paint: the picture's alpha is the coverage, recoloured at run time.
        const src = path.join(tmp, `${name}_${state}.svg`);
        fs.writeFileSync(src, fs.readFileSync(svg(form, icon), "utf8").replaceAll("currentColor", "#ffffff"));
        run("rsvg-convert", ["-w", String(t), "-h", String(t), "-f", "png", "-o", path.join(dir, `${name}_${state}.png`), src]);
      }
    }
    const record = {
      name,
      icon,
      category,
      style: filled ? "outline+filled" : "outline",
      states: forms.map(([s]) => s),
    };
    for (const token of [name, ...aliases]) {
      if (seen.has(token)) throw new Error(`token ${token} listed twice`);
      seen.add(token);
      icons[token] = record;
    }
  }
  const tokens = Object.keys(icons).sort();
  const sorted = Object.fromEntries(tokens.map((k) => [k, icons[k]]));
  writeJson(path.join(OUT, "index.json"), {
    source: `@tabler/icons ${VERSION} (MIT, see LICENSE)`,
    tiers: TIERS,
    pictures: "<tier>/<name>_<state>.png, white, alpha = coverage",
    icons: sorted,
  });
  writeJson(PUBLISHED, sorted);
  fs.copyFileSync(path.join(pkg, "LICENSE"), path.join(OUT, "LICENSE"));
  console.log(`baked ${TABLE.length} pictures, ${tokens.length} tokens, @tabler/icons ${VERSION}`);
} finally {
  fs.rmSync(tmp, { recursive: true, force: true });
}
