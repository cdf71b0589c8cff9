// The filters that are applied before the one that is edited.
import { find } from "./dom.js";
import { kinds, threeDigits } from "./settings.js";

function textOf({ kind, frequency, angle, bothSides }) {
    const { shape, passes } = kinds[kind];
    const period = frequency > 0 ? `${threeDigits(1 / frequency)} px` : "DC";
    const place = shape === "lobe" ? `${period}, ${String(angle).replace("-", "−")}°` : `ring of ${period}`;
    return `${passes ? "pass" : "reject"} ${place}${shape === "lobe" && !bothSides ? ", one side" : ""}`;
}

export class Before {
    // `change` sets what is left of the list.
    constructor(change) {
        this.change = change;
        this.steps = null;
    }

    show(steps) {
        if (steps === this.steps) return;
        this.steps = steps;
        find("before").hidden = steps.length === 0;
        find("beforeList").replaceChildren(...steps.map((step, at) => this.row(step, at)));
    }

    row(step, at) {
        const row = document.createElement("li"), text = textOf(step);
        row.innerHTML = `<span></span><button type="button">×</button>`;
        row.querySelector("span").textContent = text;
        const button = row.querySelector("button");
        button.setAttribute("aria-label", `Remove from the list: ${text}`);
        button.addEventListener("click", () => this.remove(at));
        return row;
    }

    // The focus stays in the list while there is one.
    remove(at) {
        this.change({ before: this.steps.filter((_, other) => other !== at) });
        const buttons = find("beforeList").querySelectorAll("button");
        (buttons[Math.min(at, buttons.length - 1)] ?? document.querySelector("[name=kind]:checked")).focus();
    }
}
