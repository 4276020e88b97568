// Run in each page: what docs/site/check.py judges.
const here = document.documentElement;

// Of the element, and of the text in it.
function rightEnd(element) {
  const { left, width } = element.getBoundingClientRect();
  return left + Math.max(width, element.scrollWidth);
}

// What reaches beyond the window and does not scroll by itself.
function beyondTheWindow() {
  if (here.scrollWidth <= here.clientWidth) return [];
  const scrolls = (element) =>
    element !== here &&
    element !== document.body &&
    (getComputedStyle(element).overflowX !== "visible" || scrolls(element.parentElement));
  return [...document.body.querySelectorAll("*")]
    .filter((each) => rightEnd(each) > here.clientWidth + 1)
    .filter((each) => !scrolls(each.parentElement))
    .slice(-3)
    .map((each) => `${each.localName}.${each.className}: ${each.textContent.trim().slice(0, 40)}`);
}

const withAddress = [...document.querySelectorAll("[src], link[href]")];
return {
  title: document.title,
  text: document.querySelector("main")?.innerText.trim().length ?? 0,
  width: here.scrollWidth,
  window: here.clientWidth,
  beyond: beyondTheWindow(),
  ids: [...document.querySelectorAll("[id], a[name]")].flatMap((each) => [each.id, each.name]),
  links: [...document.querySelectorAll("a[href]")].map((each) => each.href),
  scripts: document.querySelectorAll("script, [onclick]").length,
  resources: withAddress.map((each) => each.src ?? each.href),
  images: [...document.images].map((each) => ({
    source: each.src,
    alternative: each.alt,
    loaded: each.complete && each.naturalWidth > 0,
  })),
};
