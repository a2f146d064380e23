declare module '@mixmark-io/domino' {
  function createDocument(html: string): Document;
  export default { createDocument };
}
