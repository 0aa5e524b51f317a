#include "frontend/export/html/page_design.h"

namespace vexa::frontend {

std::string_view pageStyle() {
    return R"(body{margin:2em;font-family:sans-serif;line-height:1.4;color:#1a1a1a;background:#fff}
h1,h2,h3,h4,h5,h6{line-height:1.2;margin:1.4em 0 .5em}
h1{font-size:1.6em}h2{font-size:1.35em}h3{font-size:1.15em}h4,h5,h6{font-size:1em}
.table{margin:1em 0 1.6em;overflow-x:auto;padding-right:1em;position:relative}
table{border-collapse:collapse;margin:0 0 .4em}
td{min-width:var(--least,0);max-width:var(--most,none)}th[scope=row]:not([colspan]){max-width:var(--label,none)}
caption{caption-side:top;text-align:left;width:0;min-width:100%}caption>div{width:max-content;max-width:min(42em,85vw)}
.table>p,.layer>p{margin:.2em 0}
.footnotes{list-style:none;margin:.2em 0;padding-left:0}
sup{line-height:0;font-size:.75em}sup a{text-decoration:none;margin-left:.15em}
sup.beside{position:absolute;line-height:1}
figure{margin:1em 0 1.6em}figure svg,figure img{max-width:100%;height:auto}
pre{margin:1em 0;padding:.6em .8em;background:#f5f5f5;overflow-x:auto}
.warning{border-left:.25em solid #b45309;padding:.1em .8em}
.text,.warning,th,td{white-space:pre-wrap}
h1,h2,h3,h4,h5,h6,p,pre,li,dt,dd,th,td,caption>div{unicode-bidi:plaintext}
h1,h2,h3,h4,h5,h6,p,li,dt,dd{overflow-wrap:anywhere}
.pagetitle{border-bottom:1px solid #ccc;color:#555}
.notes dt{font-weight:bold}.notes dd{margin:0 0 .3em 1.5em}
.choose label{margin-right:1em}
@media(max-width:40em){th[scope=row]{min-width:4em}}
@media print{body{margin:0}.break{break-before:page}thead{display:table-header-group}figure,table,tr{break-inside:avoid}h1,h2,h3,h4,h5,h6,.log{break-after:avoid}.footnotes,.table>p,.layer>p{break-before:avoid}.table{overflow:visible}.choose{display:none}}
)";
}

std::string_view layerScript() {
    return R"(<script>
// Shows of each table the layer that its lists choose. Without this script all layers are shown.
for (const pivot of document.querySelectorAll('.pivot')) {
  const lists = [...pivot.querySelectorAll('.choose select')];
  const show = () => {
    const wanted = lists.map(list => list.value).join(' ');
    for (const layer of pivot.querySelectorAll('.layer')) layer.hidden = layer.dataset.layer !== wanted;
  };
  for (const list of lists) list.addEventListener('change', show);
  pivot.querySelector('.choose').hidden = false;
  show();
}
</script>
)";
}

}  // namespace vexa::frontend
