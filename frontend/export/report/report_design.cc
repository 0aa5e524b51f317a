#include "frontend/export/report/report_design.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view style =
    R"(:root{color-scheme:light dark;--page:#fbfbfa;--paper:#fff;--ink:#1c2024;--soft:#5c6670;--line:#d9dde1;--edge:#858f99;--band:#f3f5f7;--accent:#1f5fa8;--mark:#fff3bf;--warn:#b45309}
@media(prefers-color-scheme:dark){:root:not([data-theme=light]){--page:#14171a;--paper:#1b1f23;--ink:#e6e9ec;--soft:#9aa5b0;--line:#353c43;--edge:#6b757f;--band:#23282d;--accent:#7db4f0;--mark:#5c4a00;--warn:#f0a54a}}
:root[data-theme=dark]{color-scheme:dark;--page:#14171a;--paper:#1b1f23;--ink:#e6e9ec;--soft:#9aa5b0;--line:#353c43;--edge:#6b757f;--band:#23282d;--accent:#7db4f0;--mark:#5c4a00;--warn:#f0a54a}
:root[data-theme=light]{color-scheme:light}
*{box-sizing:border-box}
html{scroll-behavior:smooth;scroll-padding-top:1rem}
body{margin:0;font:16px/1.5 system-ui,"Segoe UI",Roboto,"Noto Sans",sans-serif;color:var(--ink);background:var(--page);display:grid;grid-template-columns:minmax(14rem,19rem) minmax(0,1fr);grid-template-areas:"head head" "side main";grid-template-rows:auto 1fr;min-height:100vh}
a{color:var(--accent)}
a:focus-visible,button:focus-visible,input:focus-visible,select:focus-visible,[role=treeitem]:focus-visible{outline:2px solid var(--accent);outline-offset:2px;border-radius:3px}
.skip{position:absolute;left:-999em}.skip:focus{left:1rem;top:.5rem;background:var(--paper);padding:.4rem .8rem}
.head{grid-area:head;display:flex;flex-wrap:wrap;gap:.4rem 1.5rem;align-items:baseline;padding:1.1rem 2rem;background:var(--paper);border-bottom:1px solid var(--line)}
.head h1{margin:0;font-size:1.5rem;line-height:1.25;font-weight:650;flex:1 1 16rem;overflow-wrap:anywhere}
.head ul{display:flex;flex-wrap:wrap;gap:.3rem 1.2rem;margin:0;padding:0;list-style:none}
.theme{font:inherit;font-size:.85rem;color:var(--soft);background:none;border:1px solid var(--edge);border-radius:6px;padding:.2rem .7rem;cursor:pointer}
.side{grid-area:side;position:sticky;top:0;align-self:start;max-height:100vh;overflow:auto;padding:1.2rem 1rem 2rem 1.2rem;font-size:.9rem}
.side label{display:block;font-size:.8rem;color:var(--soft)}
.side input{width:100%;margin:.2rem 0 .8rem;padding:.35rem .6rem;font:inherit;color:inherit;background:var(--paper);border:1px solid var(--edge);border-radius:6px}
.side ul{list-style:none;margin:0;padding-left:1rem}.side>ul{padding-left:0}
.side li{position:relative}
.side .row{display:flex;align-items:baseline;border-radius:5px;position:relative;padding-left:1.2rem}
.side .row:hover{background:var(--band)}
.side .fold{position:absolute;left:0;width:1.2rem;top:.1rem;border:0;background:none;color:var(--soft);padding:0;font:inherit;cursor:pointer}
.side .fold::before{content:"\25BE"}
.side li[aria-expanded=false] > .row .fold::before{content:"\25B8"}
.side li[aria-expanded=false] > ul{display:none}
.side .row a{flex:1;color:inherit;text-decoration:none;padding:.16rem .3rem;overflow-wrap:anywhere}
.side li.here > .row{background:var(--band);box-shadow:inset 3px 0 var(--accent)}
.side .empty{color:var(--soft)}
.main{grid-area:main;padding:1.5rem 2rem 4rem;min-width:0}.side+.main{border-left:1px solid var(--line)}
.main h2,.main h3,.main h4,.main h5,.main h6{line-height:1.25;margin:2rem 0 .6rem;font-weight:650}
.main>:first-child{margin-top:0}
.main h2{font-size:1.35rem;border-bottom:1px solid var(--line);padding-bottom:.3rem}.main h3{font-size:1.15rem}.main h4,.main h5,.main h6{font-size:1rem}
.table,figure,pre,.warning,.notes,.text,.pagetitle,.unknown{margin:1rem 0 1.5rem}
.table,figure{overflow-x:auto;position:relative;width:fit-content;min-width:min(100%,40rem);max-width:100%;background:var(--paper);border:1px solid var(--line);border-radius:10px;padding:1rem 1.2rem}
:target{outline:2px solid var(--accent);outline-offset:3px}
table{border-collapse:collapse}
td{min-width:var(--least,0);max-width:var(--most,none)}th[scope=row]:not([colspan]){max-width:var(--label,none)}
caption{caption-side:top;text-align:left;padding-bottom:.4rem;width:0;min-width:100%}caption>div{width:max-content;max-width:min(42em,85vw)}.side+.main caption>div{max-width:min(42em,100vw - 27rem)}
.table p{margin:.4rem 0 0}
.layer+.layer,.table>table:not(:first-child){margin-top:1.2rem}
.footnotes{list-style:none;margin:.5rem 0 0;padding:0}
sup{line-height:0;font-size:.72em}sup a{text-decoration:none;margin-left:.15em}
sup.beside{position:absolute;line-height:1}
figure svg,figure img{max-width:100%;height:auto;background:#fff;border-radius:4px;display:block}
pre{padding:.8rem 1rem;background:var(--band);border-radius:8px;overflow-x:auto;font-size:.85rem}
.warning{border-left:4px solid var(--warn);background:var(--paper);padding:.5rem 1rem;border-radius:0 8px 8px 0}
.text,.warning,th,td{white-space:pre-wrap}
h1,h2,h3,h4,h5,h6,p,pre,li,dt,dd,th,td,caption>div,.side .row a{unicode-bidi:plaintext}
.main h2,.main h3,.main h4,.main h5,.main h6,p,li,dt,dd{overflow-wrap:anywhere}
.pagetitle{color:var(--soft);border-bottom:1px solid var(--line)}
.notes{display:grid;grid-template-columns:max-content minmax(0,1fr);gap:.1rem 1rem;font-size:.9rem}.notes dt{color:var(--soft)}.notes dd{margin:0;overflow-wrap:anywhere}
.choose{margin:0 0 .6rem}.choose label{margin-right:1rem}
[hidden]{display:none!important}
@media(max-width:52rem){body{display:block}.head,.side+.main,.main{padding-left:1rem;padding-right:1rem;border-left:0}.side{position:static;max-height:none;border-bottom:1px solid var(--line);padding:.8rem 1rem}.side>ul{max-height:40vh;overflow:auto}.table,figure{padding:.7rem .8rem;border-radius:8px}.side+.main caption>div{max-width:80vw}th[scope=row]{min-width:4em}}
@media print{:root,:root:not([data-theme=light]),:root[data-theme=dark]{color-scheme:light;--page:#fff;--paper:#fff;--ink:#000;--soft:#444;--line:#999;--edge:#999;--band:#f3f3f3;--accent:#000}body{display:block;font-size:10pt}.side,.skip,.theme,.choose{display:none}.head,.main,.side+.main{padding:0;border:0}.head{margin-bottom:1rem}.table,figure{border:0;padding:0;overflow:visible}thead{display:table-header-group}figure,table,tr{break-inside:avoid}h2,h3,h4,h5,h6,.log{break-after:avoid}.footnotes,.table>p,.layer>p{break-before:avoid}.break{break-before:page}}
)";

}  // namespace

std::string_view reportStyle() { return style; }

std::string_view ownLooksStyle() {
    return R"(.table,figure{background:#fff;color:#1c2024;color-scheme:light;--accent:#1f5fa8}
)";
}

std::string_view restyledStyle() {
    return R"(.table{font-size:.88rem;font-variant-numeric:tabular-nums}
caption>:first-child{font-weight:650;font-size:1rem}
th,td{padding:.28rem .7rem;border-bottom:1px solid var(--line)}
thead th,thead td{border-bottom:1px solid var(--line);color:var(--soft);font-weight:600}
thead tr:last-child th,thead tr:last-child td{border-bottom:2px solid var(--soft)}
tbody th{font-weight:500}
tbody tr:hover td{background:var(--band)}
.table>p,.layer>p,.footnotes{font-size:.82rem;color:var(--soft)}
)";
}

namespace {

constexpr std::string_view script = R"(<script>
// The outline at the side: a tree that keys move in, that folds, and that a search narrows down. Without this
// script it is a list of links.
(() => {
  const side = document.querySelector('.side');
  const tree = side.querySelector('ul');
  const items = [...tree.querySelectorAll('li')];
  const search = side.querySelector('input');
  const empty = side.querySelector('.empty');
  tree.setAttribute('role', 'tree');
  tree.setAttribute('aria-label', side.getAttribute('aria-label'));
  const link = item => item.querySelector('a');
  const parent = item => item.parentElement.closest('li');
  const fold = (item, open) => {
    if (item.hasAttribute('aria-expanded')) item.setAttribute('aria-expanded', open);
  };
  for (const item of items) {
    item.setAttribute('role', 'treeitem');
    item.tabIndex = -1;
    link(item).tabIndex = -1;
    const list = item.querySelector('ul');
    if (!list) continue;
    list.setAttribute('role', 'group');
    item.setAttribute('aria-expanded', 'true');
    const button = document.createElement('button');
    button.type = 'button';
    button.className = 'fold';
    button.tabIndex = -1;
    button.setAttribute('aria-hidden', 'true');
    item.querySelector('.row').prepend(button);
    button.addEventListener('click', () => {
      fold(item, item.getAttribute('aria-expanded') === 'false');
      focus(item);
    });
  }
  const shown = () => items.filter(item => item.offsetParent !== null);
  let current = items[0];
  // One item takes the tab key; arrows move within.
  const focus = item => {
    if (!item) return;
    if (current) current.tabIndex = -1;
    current = item;
    item.tabIndex = 0;
    item.focus();
  };
  if (current) current.tabIndex = 0;
  tree.addEventListener('keydown', event => {
    const item = event.target.closest('li');
    if (!item || event.altKey || event.ctrlKey || event.metaKey) return;
    const all = shown();
    const at = all.indexOf(item);
    const isOpen = item.getAttribute('aria-expanded');
    switch (event.key) {
      case 'ArrowDown': focus(all[at + 1]); break;
      case 'ArrowUp': focus(all[at - 1]); break;
      case 'Home': focus(all[0]); break;
      case 'End': focus(all[all.length - 1]); break;
      case 'ArrowRight': isOpen === 'false' ? fold(item, true) : isOpen && focus(all[at + 1]); break;
      case 'ArrowLeft': isOpen === 'true' ? fold(item, false) : focus(parent(item)); break;
      case 'Enter': case ' ': link(item).click(); break;
      default: return;
    }
    event.preventDefault();
    event.stopPropagation();
  });
  tree.addEventListener('click', event => {
    const item = event.target.closest('a') && event.target.closest('li');
    if (item) focus(item);
  });
  // An item is kept when it, something under it, or something above it has the words.
  search.parentElement.hidden = false;
  search.addEventListener('input', () => {
    const words = search.value.trim().toLowerCase();
    const has = item => link(item).textContent.toLowerCase().includes(words);
    const above = item => item && (has(item) || above(parent(item)));
    let kept = 0;
    for (const item of items) {
      const keep = above(item) || [...item.querySelectorAll('li')].some(has);
      item.hidden = !keep;
      if (keep) { ++kept; if (words) fold(item, true); }
    }
    empty.hidden = kept > 0;
    const first = shown()[0];
    if (current && current.hidden && first) { current.tabIndex = -1; current = first; first.tabIndex = 0; }
  });
  search.addEventListener('keydown', event => {
    if (event.key === 'ArrowDown') { event.preventDefault(); focus(shown()[0]); }
    if (event.key === 'Escape') { search.value = ''; search.dispatchEvent(new Event('input')); }
  });
  // Where the reader is.
  const byId = new Map(items.map(item => [decodeURIComponent(link(item).hash.slice(1)), item]));
  if ('IntersectionObserver' in window) {
    const watcher = new IntersectionObserver(entries => {
      for (const entry of entries) {
        if (!entry.isIntersecting) continue;
        for (const item of tree.querySelectorAll('.here')) item.classList.remove('here');
        byId.get(entry.target.id)?.classList.add('here');
      }
    }, {rootMargin: '0px 0px -75% 0px'});
    for (const id of byId.keys()) {
      const target = document.getElementById(id);
      if (target) watcher.observe(target);
    }
  }
  // Light or dark: as the system says, until the button is pressed.
  const theme = document.querySelector('.theme');
  theme.hidden = false;
  theme.addEventListener('click', () => {
    const root = document.documentElement;
    const isDark = root.dataset.theme ? root.dataset.theme === 'dark' : matchMedia('(prefers-color-scheme: dark)').matches;
    root.dataset.theme = isDark ? 'light' : 'dark';
  });
})();
</script>
)";

}  // namespace

std::string_view reportScript() { return script; }

}  // namespace vexa::frontend
