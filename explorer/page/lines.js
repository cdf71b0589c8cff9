// The lines that make the same result: for a shell, in C++, in Python.
import { kinds } from "./settings.js";

const classes = ["BandPass", "BandReject", "Gabor", "GaborReject", "Image"];

function quoted(name) {
    return /^[\w.\/+-]+$/.test(name) && !name.startsWith("-") ? name : `'${name.replaceAll("'", "'\\''")}'`;
}

// The page shows colours as grey, whatever the program makes of them by itself.
function ofResult({ border, rescale, signed }, isColour) {
    const words = isColour ? ["--channels grey"] : [];
    if (border === "zero") words.push("--border zero");
    if (rescale !== null) words.push(rescale === 100 ? "--rescale" : `--rescale ${rescale}`);
    if (signed) words.push("--signed");
    return words;
}

function ofFilter(s, kernel) {
    const { shape } = kinds[s.kind];
    if (shape === "weights") return [`--kernel ${quoted(kernel)}`];
    const words = [`--frequency ${s.frequency}`];
    if (shape === "lobe") words.push(`--angle ${s.angle}`);
    words.push(`--sigma ${s.sigma}`);
    if (shape === "lobe" && s.sigmaAcross !== s.sigma) words.push(`--sigma-across ${s.sigmaAcross}`);
    if (s.plateau !== 0) words.push(`--plateau ${s.plateau}`);
    if (shape === "lobe" && s.plateauAcross !== s.plateau) words.push(`--plateau-across ${s.plateauAcross}`);
    if (s.dcRadius !== 0) words.push(`--dc-radius ${s.dcRadius}`);
    return words;
}

function input(name) {
    return quoted(name.replace(/\.\w+$/, "") + ".png");
}

export function commandLine(s, name, kernel, isColour) {
    const words = [...ofFilter(s, kernel), ...ofResult(s, isColour)];
    return ["mvfreq", kinds[s.kind].name, ...words, input(name), "out.png"].join(" ");
}

export function applyLine(s, name, isColour) {
    return ["mvfreq apply filter.mva", ...ofResult(s, isColour), input(name), "out.png"].join(" ");
}

function spreading({ rescale }) {
    return rescale !== null && rescale < 100;
}

function cppFilter(s, { width, height }) {
    const size = `.size = {${width}, ${height}}`;
    const radius = `.dcRadius = ${s.dcRadius}`;
    const type = `mvFrequencyFilter${classes[s.kind]}`;
    if (kinds[s.kind].shape === "weights") {
        return `// weights: ${width} x ${height} doubles with the sum 1, their centre at (0, 0)\n` +
            "mvFrequencyBuffer response;\nmfForwardFFT(weights, response);\n" +
            `const ${type} filter(response);`;
    }
    const shape = kinds[s.kind].shape === "ring"
        ? `.sigma = ${s.sigma}, .plateau = ${s.plateau}, .frequency = ${s.frequency},`
        : `.sigma = {${s.sigma}, ${s.sigmaAcross}}, .plateau = {${s.plateau}, ${s.plateauAcross}},\n` +
          `     .angle = mvRadian(${s.angle} * std::numbers::pi / 180), .frequency = ${s.frequency},`;
    return `const ${type} filter(\n    {${shape}\n     ${size}, ${radius}});`;
}

export function cppLines(s, plane, isWide) {
    const options = [];
    if (s.border === "zero") options.push(".border = mvBorder::zero");
    const isDouble = s.signed || spreading(s);
    if (s.signed) options.push(".result = mvFilterResult::real");
    if (s.rescale === 100 && !s.signed) options.push(".rescale = true");
    const pel = isDouble ? "double" : isWide ? "unsigned short" : "unsigned char";
    const last = options.length ? `, {${options.join(", ")}}` : "";
    const rest = s.signed && s.rescale !== null || spreading(s)
        ? `\n// then spread ${s.rescale} % of the pels over the grey levels` : "";
    const needs = kinds[s.kind].shape === "lobe" ? "#include <numbers>\n\n" : "";
    return `#include <filt/freqfilt.h>\n${needs || "\n"}${cppFilter(s, plane)}\nmvPelBuffer<${pel}> result;\n` +
        `mfFilterImage(image, filter, result${last});${rest}`;
}

function pythonFilter(s, { width, height }) {
    const type = `mvfreq.FrequencyFilter${classes[s.kind]}`;
    const last = `size=(${width}, ${height}), dc_removal_radius=${s.dcRadius})`;
    if (kinds[s.kind].shape === "weights") {
        return `# weights: ${height} rows of ${width} floats with the sum 1, their centre at [0, 0]\n` +
            `filter = ${type}(mvfreq.forward_fft(weights))`;
    }
    if (kinds[s.kind].shape === "ring") {
        return `filter = ${type}(\n    sigma=${s.sigma}, plateau=${s.plateau}, frequency=${s.frequency},\n    ${last}`;
    }
    return `filter = ${type}(\n    sigma=(${s.sigma}, ${s.sigmaAcross}), plateau=(${s.plateau}, ${s.plateauAcross}),\n` +
        `    angle=math.radians(${s.angle}), frequency=${s.frequency},\n    ${last}`;
}

export function pythonLines(s, plane) {
    const options = [];
    if (s.signed || spreading(s)) options.push("float");
    if (s.border === "zero") options.push('border="zero"');
    if (s.signed) options.push('result="real"');
    if (s.rescale === 100 && !s.signed) options.push("rescale=True");
    const imports = kinds[s.kind].shape === "lobe" ? "import math\nimport mvfreq" : "import mvfreq";
    const rest = s.signed && s.rescale !== null || spreading(s)
        ? `\n# then spread ${s.rescale} % of the pels over the grey levels` : "";
    return `${imports}\n\n${pythonFilter(s, plane)}\n` +
        `result = mvfreq.filter_image(${["image", "filter", ...options].join(", ")})${rest}`;
}
