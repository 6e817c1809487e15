// The search of the manual: every word that is typed must be in a part, or in its heading.
(function () {
  const box = document.getElementById("search");
  const list = document.getElementById("found");
  if (!box || !list || typeof manual === "undefined") return;
  const plain = (t) => t.toLowerCase().normalize("NFD").replace(/[\u0300-\u036f]/g, "");
  const parts = manual.map((p) => ({ to: p[0], title: p[1], chapter: p[2],
                                     head: plain(p[1]), text: plain(p[1] + " " + p[3]) }));
  function search() {
    const words = plain(box.value).split(/\s+/).filter((w) => w.length > 1);
    list.replaceChildren();
    list.hidden = words.length === 0;
    if (list.hidden) return;
    const found = parts.filter((p) => words.every((w) => p.text.includes(w)));
    const rank = (p) => words.filter((w) => p.head.includes(w)).length;
    found.sort((a, b) => rank(b) - rank(a));
    for (const p of found.slice(0, 20)) {
      const item = document.createElement("li");
      const link = document.createElement("a");
      link.href = p.to;
      link.textContent = p.title === p.chapter ? p.title : p.title + " (" + p.chapter + ")";
      item.append(link);
      list.append(item);
    }
    if (found.length === 0) {
      const item = document.createElement("li");
      item.textContent = "-";
      list.append(item);
    }
  }
  box.addEventListener("input", search);
  box.addEventListener("keydown", (e) => {
    if (e.key === "Escape") { box.value = ""; search(); }
    if (e.key === "Enter") { const first = list.querySelector("a"); if (first) first.click(); }
  });
  // "/" goes to the search, as in many programs that show text.
  document.addEventListener("keydown", (e) => {
    if (e.key === "/" && document.activeElement !== box) { e.preventDefault(); box.focus(); }
  });
  // The other language opens at the same place.
  const other = document.querySelector("a.language");
  if (other) other.addEventListener("click", () => { other.hash = location.hash; });
})();
