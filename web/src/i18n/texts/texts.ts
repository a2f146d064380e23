/** One row for each text: Portuguese, English, Spanish. `{x}` is a placeholder. */
export type Texts = Record<string, readonly [string, string, string]>;
