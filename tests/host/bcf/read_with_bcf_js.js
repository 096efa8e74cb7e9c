// Reads a BCF archive with @parametricos/bcf-js and prints, for each topic, its title,
// its number of comments and its perspective cameras, as JSON. Its reader prints what
// went wrong to standard error and carries on, so any of that fails the read.
const [, , readerDir, version, file] = process.argv;
const { BcfReader } = require(readerDir + (version === "2.1" ? "/dist/2.1" : "/dist"));
const fs = require("fs");
let complained = false;
console.error = (...what) => {
  complained = true;
  process.stderr.write(what.join(" ") + "\n");
};
(async () => {
  const reader = new BcfReader();
  await reader.read(fs.readFileSync(file));
  const topics = reader.markups.map(markup => ({
    title: markup.topic.title,
    comments: (markup.topic.comments || []).map(comment => comment.comment),
    cameras: markup.viewpoints.filter(v => v.perspective_camera).map(v => v.perspective_camera),
  }));
  console.log(JSON.stringify(topics));
  process.exit(complained ? 1 : 0);
})();
