// Sorts the register by the column whose heading is clicked; once more turns the order round. Rows
// without a value come last.
(() => {
    "use strict";
    const table = document.getElementById("registro");
    if (!table) return;
    const body = table.tBodies[0];
    const compareTexts = new Intl.Collator("it", { numeric: true, sensitivity: "base" }).compare;
    const compareNumbers = (a, b) => a - b;

    const valueOf = (row, column) => {
        const cell = row.cells[column];
        return cell.dataset.v ?? cell.textContent.trim();
    };

    const sortBy = (heading, descending) => {
        const column = heading.cellIndex;
        const compare = heading.dataset.numeric === undefined ? compareTexts : compareNumbers;
        const sign = descending ? -1 : 1;
        const rows = Array.from(body.rows, (row) => ({ row, value: valueOf(row, column) }));
        rows.sort((a, b) =>
            (a.value === "") - (b.value === "") || sign * compare(a.value, b.value));
        body.append(...rows.map(({ row }) => row));
    };

    // No button element: a head that holds one is not repeated on every printed page.
    for (const heading of table.tHead.rows[0].cells) {
        const button = document.createElement("span");
        button.setAttribute("role", "button");
        button.tabIndex = 0;
        button.append(...heading.childNodes);
        heading.append(button);
        button.addEventListener("click", () => {
            const descending = heading.getAttribute("aria-sort") === "ascending";
            for (const other of heading.parentNode.cells) other.removeAttribute("aria-sort");
            heading.setAttribute("aria-sort", descending ? "descending" : "ascending");
            sortBy(heading, descending);
        });
        button.addEventListener("keydown", (event) => {
            if (event.key !== "Enter" && event.key !== " ") return;
            event.preventDefault();
            button.click();
        });
    }
})();
