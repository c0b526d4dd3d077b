/*
 * Standard component values: the preferred numbers of the E series, the nearest value
 * to a wanted one, the best divider of two resistors, and a table of all that.
 *
 * The text of the table is the value of the last line; a host prints it where it likes.
 */
"use strict";

// The series E24 and below are historic: they are not the rounded powers of ten.
const E24 = [10, 11, 12, 13, 15, 16, 18, 20, 22, 24, 27, 30,
             33, 36, 39, 43, 47, 51, 56, 62, 68, 75, 82, 91];

const SUFFIXES = { f: 1e-15, p: 1e-12, n: 1e-9, u: 1e-6, m: 1e-3, "": 1, k: 1e3, meg: 1e6, g: 1e9, t: 1e12 };

/** The mantissas of a series, 1 to below 10. E48 and up are powers of ten, three digits. */
function series(name) {
	const count = parseInt(name.slice(1), 10);
	if (count <= 24) {
		return E24.filter((_, i) => i % (24 / count) === 0).map(v => v / 10);
	}
	const values = [];
	for (let i = 0; i < count; i++) {
		values.push(Math.round(100 * Math.pow(10, i / count)) / 100);
	}
	if (count === 192) {
		values[185] = 9.20;		// the one exception in the standard
	}
	return values;
}

/** "4.7k", "2.2uF", "1meg" or "1e-9" as a number; NaN for anything else. */
function parseValue(text) {
	const m = /^\s*([-+]?(?:\d+\.?\d*|\.\d+)(?:e[-+]?\d+)?)\s*(meg|[fpnumkgt])?[a-z\/%]*\s*$/i.exec(text);
	if (!m) return NaN;
	return Number(m[1]) * SUFFIXES[(m[2] || "").toLowerCase()];
}

/** A number with its engineering suffix, three digits: 4700 is "4.7k". */
function formatValue(value, unit = "") {
	if (value === 0 || !isFinite(value)) return `${value}${unit}`;
	const names = Object.keys(SUFFIXES).sort((a, b) => SUFFIXES[b] - SUFFIXES[a]);
	const fits = n => Math.abs(value) >= SUFFIXES[n] * 0.9995;
	const name = names.find(fits) ?? "f";
	const digits = (value / SUFFIXES[name]).toPrecision(3);
	return (digits.includes(".") ? digits.replace(/\.?0+$/, "") : digits) + name + unit;
}

/** The value of the series nearest to the wanted one, by ratio. */
function nearest(wanted, values) {
	const decade = Math.pow(10, Math.floor(Math.log10(wanted)));
	let best = 0, error = Infinity;
	for (const v of [...values, 10 * values[0]]) {
		const e = Math.abs(Math.log(v * decade / wanted));
		if (e < error) { best = v * decade; error = e; }
	}
	return best;
}

/** Two resistors between `low` and `high` whose divider comes nearest to `ratio` = Rb / (Ra + Rb). */
function divider(ratio, values, low = 1e3, high = 100e3) {
	let best = { ra: 0, rb: 0, error: Infinity };
	for (let decade = low; decade < high; decade *= 10) {
		for (const v of values) {
			const rb = v * decade;
			const ra = nearest(rb / ratio - rb, values);
			if (ra < low || ra > high) continue;
			const error = Math.abs(rb / (ra + rb) / ratio - 1);
			if (error < best.error) best = { ra, rb, error };
		}
	}
	return best;
}

class Table {
	#rows = [];

	constructor(...heads) {
		this.heads = heads;
	}

	add(...cells) {
		this.#rows.push(cells.map(String));
		return this;
	}

	toString() {
		const all = [this.heads, ...this.#rows];
		const width = this.heads.map((_, c) => Math.max(...all.map(row => row[c].length)));
		const line = row => row.map((cell, c) => cell.padEnd(width[c])).join("  ").trimEnd();
		return [line(this.heads), width.map(w => "-".repeat(w)).join("  "), ...this.#rows.map(line)].join("\n");
	}
}

function report() {
	const wanted = ["6.68k", "2.77k", "2.58nF", "15.02nF", "23.1meg"];
	const table = new Table("wanted", "E12", "E24", "E96", "error %");
	for (const text of wanted) {
		const value = parseValue(text);
		const found = ["E12", "E24", "E96"].map(name => nearest(value, series(name)));
		const error = 100 * (found[2] / value - 1);
		table.add(text, ...found.map(v => formatValue(v)), error.toFixed(2));
	}

	const dividers = new Table("ratio", "Ra", "Rb", "error ppm");
	for (const ratio of [1 / 3, 0.25, 1.25 / 3.3, 0x10 / 0xff]) {
		const { ra, rb, error } = divider(ratio, series("E24"));
		dividers.add(ratio.toPrecision(4), formatValue(ra), formatValue(rb), (error * 1e6).toFixed(0));
	}

	return `Values for the low-pass filter

${table}

Dividers of two resistors from E24

${dividers}
`;
}

report();
