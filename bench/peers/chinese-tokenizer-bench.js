// Times the npm package chinese-tokenizer on the files our benchmarks read; bench/compare-peers
// installs the package in a scratch folder and points NODE_PATH at it.
//
//   node chinese-tokenizer-bench.js load CEDICT
//       one load in this fresh process (the caller starts one process per run)
//   node chinese-tokenizer-bench.js tokenize CEDICT TEXT RUNS
//       loads once, tokenizes the whole text once to warm the JIT, then RUNS timed passes
'use strict';

const fs = require('fs');

function fail(message) {
  process.stderr.write(`chinese-tokenizer-bench: ${message}\n`);
  process.exit(2);
}

let tokenizer;
try {
  tokenizer = require('chinese-tokenizer');
} catch (error) {
  fail(`cannot load the chinese-tokenizer package (${error.message}); set NODE_PATH`);
}

const msSince = (start) => Number(process.hrtime.bigint() - start) / 1e6;

function median(values) {
  const sorted = [...values].sort((a, b) => a - b);
  const n = sorted.length;
  return n % 2 ? sorted[(n - 1) / 2] : (sorted[n / 2 - 1] + sorted[n / 2]) / 2;
}

const [mode, cedict, textPath, runsText] = process.argv.slice(2);
if (mode === 'load' && cedict) {
  const start = process.hrtime.bigint();
  // loadFile reads the file too, as our own load does.
  const tokenize = tokenizer.loadFile(cedict);
  const ms = msSince(start);
  if (typeof tokenize !== 'function') fail('loadFile did not return a tokenizer');
  console.log(`chinese-tokenizer load: ${ms.toFixed(2)} ms`);
} else if (mode === 'tokenize' && cedict && textPath) {
  const runs = Math.max(1, Number.parseInt(runsText || '5', 10));
  const tokenize = tokenizer.loadFile(cedict);
  const text = fs.readFileSync(textPath, 'utf-8');
  const bytes = Buffer.byteLength(text, 'utf-8');
  const tokens = tokenize(text);
  // The tokens must give the text back, as ours must, or the figure would not compare.
  const covered = tokens.reduce((sum, token) => sum + token.text.length, 0);
  if (covered !== text.replace(/\r/g, '').length) {
    fail(`tokens cover ${covered} of ${text.length} UTF-16 units`);
  }
  const times = [];
  for (let r = 0; r < runs; r++) {
    const start = process.hrtime.bigint();
    tokenize(text);
    times.push(msSince(start));
  }
  const ms = median(times);
  console.log(`chinese-tokenizer tokens: ${tokens.length}`);
  console.log(`chinese-tokenizer tokenize: ${(bytes / (ms / 1e3) / 1e6).toFixed(2)} MB/s ` +
              `(median of ${runs} runs, ${ms.toFixed(2)} ms per run, ${bytes} UTF-8 bytes)`);
} else {
  fail('usage: load CEDICT | tokenize CEDICT TEXT RUNS');
}
