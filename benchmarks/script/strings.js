// Building texts from parts, and looking into them.
function build(n) {
    var text = "";
    for (var i = 0; i < n; i++) text += "item " + i + ";";
    return text;
}
function count(text) {
    var semicolons = 0;
    for (var i = 0; i < text.length; i++) if (text.charAt(i) == ";") semicolons++;
    return semicolons;
}
var text = build(1000);
var total = 0;
for (var round = 0; round < 3; round++) total += count(build(1000));
print(text.length, total, text.substring(1000, 1012), text.indexOf("item 900"));
