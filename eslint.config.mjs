// Rules for the map's scripts. They run as one script: scripts/lint puts them together.
const browser = [
    "AbortController", "addEventListener", "atob", "Blob", "clearTimeout", "DecompressionStream",
    "devicePixelRatio", "document", "getComputedStyle", "getSelection", "history", "innerHeight",
    "innerWidth", "location", "matchMedia", "navigator", "performance", "removeEventListener",
    "requestAnimationFrame", "ResizeObserver", "Response", "self", "setTimeout", "TextDecoder", "TextEncoder",
    "URL", "URLSearchParams", "window", "Worker",
];

export default [{
    languageOptions: {
        ecmaVersion: 2021,
        sourceType: "script",
        globals: Object.fromEntries(browser.map((name) => [name, "readonly"])),
    },
    rules: {
        "eqeqeq": "error",
        "no-redeclare": "error",
        "no-undef": "error",
        "no-unused-vars": "error",
        "no-var": "error",
        "prefer-const": "error",
    },
}];
